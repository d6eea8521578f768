// A folder of its own for one test, removed with all that is in it, also when the test took its rights away.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vorlix {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "vorlix-test-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// An environment variable with another value for one test.
class TemporaryVariable {
 public:
  TemporaryVariable(const char* name, const std::string& value) : name_(name) {
    if (const char* former = std::getenv(name)) {
      had_ = true;
      former_ = former;
    }
    setenv(name, value.c_str(), 1);
  }
  ~TemporaryVariable() { had_ ? setenv(name_, former_.c_str(), 1) : unsetenv(name_); }
  TemporaryVariable(const TemporaryVariable&) = delete;
  TemporaryVariable& operator=(const TemporaryVariable&) = delete;

 private:
  const char* name_;
  bool had_ = false;
  std::string former_;
};

}  // namespace vorlix

#include "app/SystemFolders.h"

#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>

#include "services/ansi.h"

namespace vorlix {
namespace {

namespace fs = std::filesystem;

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string HomeFolder() {
  const std::string home = Variable("HOME");
  const passwd* user = home.empty() ? getpwuid(getuid()) : nullptr;
  return user == nullptr ? home : std::string(user->pw_dir);
}

bool IsNamable(const std::string& path) {
  return ToUtf8(FromUtf8(path)) == path;
}

fs::path Canonical(const fs::path& folder) {
  std::error_code error;
  fs::path path = fs::weakly_canonical(fs::absolute(folder, error), error);
  if (error) return folder;
  return path.has_filename() ? path : path.parent_path();
}

// A full path, the resolved one where that can be named.
std::string FullPath(const std::string& folder) {
  const std::string canonical = Canonical(folder).string();
  std::error_code error;
  return IsNamable(canonical) ? canonical : fs::absolute(folder, error).string();
}

}  // namespace

SystemFolders FindSystemFolders(const std::string& dataFolder) {
  SystemFolders found;
  const auto named = [&found](const std::string& path) {
    if (!IsNamable(path)) found.unnamable = path;
    return FromUtf8(path);
  };
  std::error_code error;
  const std::string program = fs::read_symlink("/proc/self/exe", error).parent_path().string();
  found.surroundings.programFolder = named(program);
  const std::string wish = dataFolder.empty() ? Variable("VORLIX_DATA") : dataFolder;
  const std::string dataHome = Variable("XDG_DATA_HOME");
  if (!wish.empty()) {
    found.surroundings.chosenFolder = named(FullPath(wish));
  } else if (dataHome.starts_with("/")) {
    found.surroundings.dataHome = named(dataHome);
  } else {
    found.surroundings.home = named(HomeFolder());
  }
  return found;
}

std::string CanonicalFolder(const std::string& folder) {
  return Canonical(ToUtf8(folder)).string();
}

}  // namespace vorlix

// A file descriptor with an owner, and the wording of what the system refuses: "what was tried: why not".
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace vorlix {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    other.Close();
    return *this;
  }
  ~Descriptor() { Close(); }

  int Get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  // 0, or the error number of a close that tells of lost data.
  int Close();

 private:
  int number_ = -1;
};

// "what: why not", in the program's text.
std::string FailureText(std::string_view what, int error);

// A path or argument as the system wants it. One with a zero byte inside names nothing and gives an empty text, so that
// it is never mistaken for what stands before that byte.
std::string SystemText(std::string_view text);

}  // namespace vorlix

#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

#include "services/ansi.h"

namespace vorlix {

int Descriptor::Close() {
  const int number = std::exchange(number_, -1);
  // An interrupted close has closed all the same.
  return number < 0 || close(number) == 0 || errno == EINTR ? 0 : errno;
}

std::string FailureText(std::string_view what, int error) {
  return std::string(what) + ": " + FromUtf8(std::generic_category().message(error));
}

std::string SystemText(std::string_view text) {
  return text.find('\0') == std::string_view::npos ? ToUtf8(text) : std::string();
}

}  // namespace vorlix

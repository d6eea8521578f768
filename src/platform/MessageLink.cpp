#include "platform/MessageLink.h"

namespace vorlix {

WindowHandle HandleForText(std::string_view text) {
  std::uint32_t hash = 2166136261u;
  for (const char character : text)
    hash = (hash ^ static_cast<unsigned char>(character)) * 16777619u;
  hash &= 0x7FFFFFFFu;
  return hash == 0 ? 1 : hash;
}

}  // namespace vorlix

#include "platform/LinkPacket.h"

#include <cstring>

namespace vorlix {

LinkPacket::LinkPacket(std::uint32_t word, std::string_view text) {
  text = text.substr(0, MessageLink::kMostText);
  const auto length = static_cast<std::uint32_t>(text.size() + 1);
  std::memcpy(bytes_.data(), &word, 4);
  std::memcpy(bytes_.data() + 4, &length, 4);
  text.copy(bytes_.data() + kHead, text.size());
  bytes_[kHead + text.size()] = '\0';
  size_ = kHead + length;
}

std::optional<LinkPacket::Content> LinkPacket::Parse(std::string_view bytes) {
  if (bytes.size() <= kHead || bytes.size() > kMost || bytes.back() != '\0') return std::nullopt;
  Content content;
  std::uint32_t length = 0;
  std::memcpy(&content.word, bytes.data(), 4);
  std::memcpy(&length, bytes.data() + 4, 4);
  if (length != bytes.size() - kHead) return std::nullopt;
  content.text = bytes.substr(kHead);
  content.text = content.text.substr(0, content.text.find('\0'));
  return content;
}

}  // namespace vorlix

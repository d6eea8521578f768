// A message of the local link as it travels: 32-bit word, 32-bit length of the text plus 1, zero-ended text. Numbers
// stand in the machine's order, both ends run on it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/MessageLink.h"

namespace vorlix {

class LinkPacket {
 public:
  static constexpr std::size_t kHead = 8;
  static constexpr std::size_t kMost = kHead + MessageLink::kMostText + 1;

  struct Content {
    std::uint32_t word = 0;
    std::string_view text;  // up to its first zero byte; lies in the bytes given
  };

  // Text beyond what a message carries is cut off.
  LinkPacket(std::uint32_t word, std::string_view text);
  std::string_view Bytes() const { return {bytes_.data(), size_}; }

  // Nothing when the bytes are not exactly one whole packet.
  static std::optional<Content> Parse(std::string_view bytes);

 private:
  std::array<char, kMost> bytes_;
  std::size_t size_;
};

}  // namespace vorlix

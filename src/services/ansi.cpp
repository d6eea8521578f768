#include "services/ansi.h"

namespace vorlix {
namespace {

void AppendUtf8(std::string& out, char32_t character) {
  if (character < 0x80) {
    out += static_cast<char>(character);
  } else if (character < 0x800) {
    out += static_cast<char>(0xC0 | (character >> 6));
    out += static_cast<char>(0x80 | (character & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (character >> 12));
    out += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (character & 0x3F));
  }
}

struct Decoded {
  char32_t character = 0;
  std::size_t length = 0;  // 0: these bytes are not UTF-8
};

// RFC 3629: overlong forms, surrogates and values above 10FFFF are not UTF-8.
Decoded DecodeUtf8(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 && lead < 0xF5   ? 4
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                                                           : 0;
  if (length == 0 || text.size() < length) return {};
  char32_t character = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return {};
    character = (character << 6) | (byte & 0x3Fu);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < kLeast[length] || surrogate || character > 0x10FFFF) return {};
  return {character, length};
}

}  // namespace

char32_t AnsiToUnicode(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? ansi_literal::kUpperControls[byte - 0x80u] : byte;
}

std::string ToUtf8(std::string_view ansi) {
  std::string out;
  out.reserve(ansi.size() + ansi.size() / 8);
  for (const char byte : ansi) {
    AppendUtf8(out, AnsiToUnicode(static_cast<unsigned char>(byte)));
  }
  return out;
}

std::string FromUtf8(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  while (!utf8.empty()) {
    const Decoded decoded = DecodeUtf8(utf8);
    if (decoded.length == 0) {
      out += utf8.front();
      utf8.remove_prefix(1);
      continue;
    }
    const int byte = ansi_literal::ByteOf(decoded.character);
    out += byte < 0 ? '?' : static_cast<char>(byte);
    utf8.remove_prefix(decoded.length);
  }
  return out;
}

}  // namespace vorlix

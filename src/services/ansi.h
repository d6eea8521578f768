// Windows-1252, the program's text. Inside the program a std::string is single-byte: one char, one byte, one
// character, as in the data files. UTF-8 is met only at the doors: source literals, screen, terminal, system paths.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vorlix {

// What a Windows-1252 byte stands for. The five bytes without a character (81, 8D, 8F, 90, 9D) stand for the control
// character of the same value, so that every byte survives a round trip.
char32_t AnsiToUnicode(unsigned char byte);

// Windows-1252 to UTF-8; never fails.
std::string ToUtf8(std::string_view ansi);

// UTF-8 to Windows-1252. A character that the code page lacks becomes "?"; a byte that is not UTF-8 is kept as it is.
std::string FromUtf8(std::string_view utf8);

namespace ansi_literal {

inline constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The byte of a character, or -1 where the code page lacks it.
constexpr int ByteOf(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<int>(character);
  for (std::size_t i = 0; i < kUpperControls.size(); ++i) {
    if (kUpperControls[i] == character) return static_cast<int>(0x80 + i);
  }
  return -1;
}

// A UTF-8 literal, converted while it is compiled; a character that Windows-1252 lacks stops the compiler.
template <std::size_t N>
struct Literal {
  char bytes[N]{};
  std::size_t length = 0;

  consteval Literal(const char (&utf8)[N]) {  // implicit: it is the parameter of a literal operator
    for (std::size_t i = 0; i + 1 < N;) {
      const auto lead = static_cast<unsigned char>(utf8[i]);
      const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
      char32_t character = more == 0 ? lead : lead & (0x3Fu >> more);
      for (int k = 1; k <= more; ++k) {
        character = (character << 6) | (static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]) & 0x3Fu);
      }
      const int byte = ByteOf(character);
      if (byte < 0) throw "this character is not in Windows-1252";
      bytes[length++] = static_cast<char>(byte);
      i += static_cast<std::size_t>(more) + 1;
    }
  }
};

}  // namespace ansi_literal

inline namespace literals {

// "Übersicht"_ansi: a Windows-1252 text with static lifetime.
template <ansi_literal::Literal text>
constexpr std::string_view operator""_ansi() {
  return {text.bytes, text.length};
}

}  // namespace literals
}  // namespace vorlix

// Rules for single-byte text that every room needs: cutting, splitting, case, numbers. All texts are Windows-1252.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

inline constexpr std::string_view kLineEnd = "\r\n";
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Without blanks at both ends; only the blank (0x20) counts, a TAB stays.
std::string_view Trim(std::string_view text);

// The parts between the delimiters; an empty text gives one empty part.
std::vector<std::string> Split(std::string_view text, std::string_view delimiter);

std::string Join(const std::vector<std::string>& parts, std::string_view delimiter);

std::string Replace(std::string_view text, std::string_view from, std::string_view to);

// Case of Windows-1252, umlauts and accented letters included.
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);
bool ContainsNoCase(std::string_view text, std::string_view part);
bool StartsWithNoCase(std::string_view text, std::string_view start);

// True for an optional sign, digits and at most one decimal point or comma, blanks around allowed; false for an empty
// text.
bool IsNumeric(std::string_view text);

// The leading whole number of a text, as the profile functions read it: blanks, sign, digits; what follows is ignored,
// no digits give nothing, a value outside 32 bits is held at the nearest end.
std::optional<int> LeadingInteger(std::string_view text);

// One of the digits 0 to 9, whatever the locale says.
constexpr bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}
// True for a text of one or more digits and nothing else.
bool IsDigits(std::string_view text);

// The text with every control character (below 32, 127, and the five without a character in Windows-1252) replaced by a
// blank: what comes from a network may not bring line ends, tabs or terminal commands into a record or onto a screen.
std::string WithoutControls(std::string_view text);

// The text as one field of a record: the separator and line ends become blanks, every other byte stays.
std::string OneField(std::string_view text, char separator);

// The text without the byte-order mark that some editors put in front of UTF-8.
std::string_view WithoutByteOrderMark(std::string_view text);

// The number with zeros in front up to `digits` characters, Padded(7, 2) is "07"; a longer number stays whole.
std::string Padded(long long number, int digits);

}  // namespace vorlix

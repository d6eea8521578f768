#include "services/text.h"

#include <algorithm>
#include <climits>

namespace vorlix {
namespace {

// Windows-1252: letters whose two cases are not 0x20 apart stand below 0xA0; 0xDF has no capital, 0xFF's lies below.
char LowerByte(char character) {
  const auto byte = static_cast<unsigned char>(character);
  if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7)) {
    return static_cast<char>(byte + 0x20);
  }
  if (byte == 0x8A || byte == 0x8C || byte == 0x8E) return static_cast<char>(byte + 0x10);
  return byte == 0x9F ? static_cast<char>(0xFF) : character;
}

char UpperByte(char character) {
  const auto byte = static_cast<unsigned char>(character);
  if ((byte >= 'a' && byte <= 'z') || (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7)) {
    return static_cast<char>(byte - 0x20);
  }
  if (byte == 0x9A || byte == 0x9C || byte == 0x9E) return static_cast<char>(byte - 0x10);
  return byte == 0xFF ? static_cast<char>(0x9F) : character;
}

bool SameByte(char a, char b) {
  return LowerByte(a) == LowerByte(b);
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> Split(std::string_view text, std::string_view delimiter) {
  std::vector<std::string> parts;
  if (delimiter.empty()) return {std::string(text)};
  for (auto at = text.find(delimiter); at != std::string_view::npos; at = text.find(delimiter)) {
    parts.emplace_back(text.substr(0, at));
    text.remove_prefix(at + delimiter.size());
  }
  parts.emplace_back(text);
  return parts;
}

std::string Join(const std::vector<std::string>& parts, std::string_view delimiter) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += delimiter;
    text += parts[i];
  }
  return text;
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string out;
  for (auto at = from.empty() ? std::string_view::npos : text.find(from); at != std::string_view::npos;
       at = text.find(from)) {
    out += text.substr(0, at);
    out += to;
    text.remove_prefix(at + from.size());
  }
  return out += text;
}

std::string Lower(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), LowerByte);
  return out;
}

std::string Upper(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), UpperByte);
  return out;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), SameByte);
}

bool ContainsNoCase(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), SameByte) != text.end() || part.empty();
}

bool StartsWithNoCase(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && EqualNoCase(text.substr(0, start.size()), start);
}

bool IsNumeric(std::string_view text) {
  text = Trim(text);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
  const auto points = std::count_if(text.begin(), text.end(), [](char c) { return c == '.' || c == ','; });
  return digits > 0 && points <= 1 && digits + points == static_cast<std::ptrdiff_t>(text.size());
}

std::optional<int> LeadingInteger(std::string_view text) {
  text = Trim(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text.front())) return std::nullopt;
  long long value = 0;
  for (const char digit : text) {
    if (!IsDigit(digit) || value > INT_MAX) break;
    value = value * 10 + (digit - '0');
  }
  return static_cast<int>(
      std::clamp(negative ? -value : value, static_cast<long long>(INT_MIN), static_cast<long long>(INT_MAX)));
}

bool IsDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

namespace {

// The five bytes without a character in Windows-1252 leave the program as what they are in Unicode, and there they
// begin commands of a terminal.
bool IsControl(unsigned char byte) {
  return byte < 32 || byte == 127 || byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
}

}  // namespace

std::string WithoutControls(std::string_view text) {
  std::string out(text);
  for (char& character : out) {
    if (IsControl(static_cast<unsigned char>(character))) character = ' ';
  }
  return out;
}

std::string OneField(std::string_view text, char separator) {
  std::string field(text);
  std::replace_if(
      field.begin(), field.end(), [&](char c) { return c == separator || c == '\r' || c == '\n'; }, ' ');
  return field;
}

std::string_view WithoutByteOrderMark(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return text;
}

std::string Padded(long long number, int digits) {
  std::string text = std::to_string(number);
  const auto width = static_cast<std::size_t>(digits);
  return text.size() >= width ? text : std::string(width - text.size(), '0') + text;
}

}  // namespace vorlix

// Reading a file of records without copying it: each call takes a piece off the front of the text. A piece that is not
// there is empty.
#pragma once

#include <algorithm>
#include <limits>
#include <string_view>

namespace vorlix {

inline std::string_view TakeUpTo(std::string_view& text, char end) {
  const std::string_view part = text.substr(0, text.find(end));
  text.remove_prefix(std::min(text.size(), part.size() + 1));
  return part;
}

// A line without its end, be that CR LF or LF.
inline std::string_view TakeLine(std::string_view& text) {
  std::string_view line = TakeUpTo(text, '\n');
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// A number too large for its member is held at the nearest end: it must not turn into some other valid one.
template <class Number>
Number HeldIn(int value) {
  return static_cast<Number>(
      std::clamp<int>(value, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()));
}

}  // namespace vorlix

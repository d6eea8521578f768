// Reading a file of records without copying it: each call takes a piece off the front of the text. A piece that is not
// there is empty.
#pragma once

#include <algorithm>
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

}  // namespace vorlix

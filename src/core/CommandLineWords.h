// The words of the command line: "auto" for a start by the system, "restart" for one by the program itself.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

// Found anywhere in the words, which are the arguments that are neither options nor option values.
inline bool HasWord(const std::vector<std::string>& words, std::string_view wanted) {
  return std::any_of(words.begin(), words.end(),
                     [wanted](const std::string& word) { return word.find(wanted) != std::string::npos; });
}

}  // namespace vorlix

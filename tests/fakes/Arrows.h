// The rows of a test that have two texts: "before -> after", where each may be empty.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace vorlix {

inline std::vector<std::pair<std::string, std::string>> Arrows(std::initializer_list<std::string> rows) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (const std::string& row : rows) {
    const std::size_t arrow = row.find("->");
    const std::size_t end = row.find_last_not_of(' ', arrow - 1), begin = row.find_first_not_of(' ', arrow + 2);
    pairs.emplace_back(row.substr(0, arrow == 0 ? 0 : end + 1), begin == std::string::npos ? "" : row.substr(begin));
  }
  return pairs;
}

}  // namespace vorlix

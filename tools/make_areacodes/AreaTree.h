// From a place name for each full number prefix to the shortest table of area codes that tells the same: prefixes are
// asked at full length, and a shorter one takes over a name that more than half of its ten children carry.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace area_codes {

// Code to name, both UTF-8. In the order of the codes a shorter one stands before the longer ones that it begins, as a
// table that is walked from its end wants it.
using Rows = std::map<std::string, std::string>;

// The name of the place that a prefix belongs to, empty where there is none.
using NameOf = std::function<std::string(const std::string& prefix)>;

inline constexpr std::size_t kAskedDigits = 5;

// How many digits the codes of a table have. A place whose own codes are longer is known by the code around it.
struct CodeLengths {
  std::size_t shortest = 1;
  std::size_t longest = kAskedDigits;
};

// A prefix with a leading zero is never asked: no area code has one.
Rows MergedRows(const NameOf& nameOf, CodeLengths lengths);

// Removes rows that say no more than the nearest shorter code.
void DropRepeated(Rows& rows);

}  // namespace area_codes

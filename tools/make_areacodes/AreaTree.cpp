#include "AreaTree.h"

#include <algorithm>
#include <vector>

namespace area_codes {
namespace {

constexpr std::ptrdiff_t kMajority = 6;  // of ten

std::string NameOfMost(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (!name.empty() && std::ranges::count(names, name) >= kMajority) return name;
  }
  return {};
}

// Fills the rows below the prefix and gives its own name back.
std::string Fill(const NameOf& nameOf, CodeLengths lengths, const std::string& prefix, Rows& rows) {
  std::string name;
  if (prefix.size() == kAskedDigits) {
    name = nameOf(prefix);
  } else {
    std::vector<std::string> names;
    for (char digit = prefix.empty() ? '1' : '0'; digit <= '9'; ++digit) {
      names.push_back(Fill(nameOf, lengths, prefix + digit, rows));
    }
    name = NameOfMost(names);
  }
  const bool fits = prefix.size() >= lengths.shortest && prefix.size() <= lengths.longest;
  if (fits && !name.empty()) rows[prefix] = name;
  return name;
}

}  // namespace

Rows MergedRows(const NameOf& nameOf, CodeLengths lengths) {
  Rows rows;
  Fill(nameOf, lengths, {}, rows);
  DropRepeated(rows);
  return rows;
}

void DropRepeated(Rows& rows) {
  std::vector<Rows::const_iterator> shorter;  // each begins the next
  for (auto row = rows.begin(); row != rows.end();) {
    while (!shorter.empty() && !row->first.starts_with(shorter.back()->first))
      shorter.pop_back();
    if (!shorter.empty() && shorter.back()->second == row->second) {
      row = rows.erase(row);
    } else {
      shorter.push_back(row++);
    }
  }
}

}  // namespace area_codes

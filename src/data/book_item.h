// One line of the phone book's files, between its text and its record.
//
//   Vorlixbook.txt: name;number;calls in;new;block;search mark;address;period;type;calls out;;;;[vcd(card)vcd]
//   cache.inv:      number|name|address, what a reverse search found
//
// Older books put the card into any field from the eighth on; all from its mark on is the card's, ";" included. Names
// and addresses are written so that they end neither their field nor the line.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/number_analysis.h"
#include "core/oDataCall.h"

namespace vorlix {

using BookItem = std::shared_ptr<oDataCall>;

// The kinds of entry; any other counts as the user's.
inline constexpr std::int16_t kBookTypeUser = 0;
inline constexpr std::int16_t kBookTypeSearch = 1;

// At least eight fields and a numeric number.
bool BookData_CheckItem(const std::vector<std::string>& fields);

// The record of a line of the book, or nothing. A block choice other than 0 marks the record as blocked. The analysis
// must outlive it.
BookItem BookData_MakeItem(std::string_view line, NumberAnalysis& numbers,
                           const std::function<bool(const std::string& number)>& haveCallerSoundFile);

// The record of a line of the search results, or nothing.
BookItem SearchResultItem(std::string_view line, NumberAnalysis& numbers);

// Whether the entry has a place in a file at all.
bool IsKeptEntry(const oDataCall& entry);

// The lines with their line ends.
std::string BookLine(const oDataCall& entry);
std::string SearchResultLine(const oDataCall& entry);

}  // namespace vorlix

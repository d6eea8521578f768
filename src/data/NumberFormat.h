// How a number is shown: country code, area code and the rest, each in one of three ways, with the names in front.
#pragma once

#include <string>
#include <string_view>

namespace vorlix {

// A number taken apart; what there is not is empty. The texts must outlive the object.
struct NumberParts {
  std::string_view state;  // with or without "00"
  std::string_view stateName;
  std::string_view city;  // with or without its zero
  std::string_view cityName;
  std::string_view number;
};

// Each 0 to 2; anything else counts as 0.
struct NumberStyle {
  int indexState = 0;   // "+49  ", "0049  ", "00 49  "
  int indexCity = 0;    // "30 " behind a country and "030 " else, "030 " always, "(030) "
  int indexNumber = 0;  // in one piece, groups of 3 and then 2, groups of 2
};

std::string FormatNumber(const NumberParts& parts, const NumberStyle& style);

// Both texts at once, which costs little more than one.
struct ShownNumber {
  std::string full;
  std::string number;  // without names
};
ShownNumber FormatWithAndWithoutNames(const NumberParts& parts, const NumberStyle& style);

}  // namespace vorlix

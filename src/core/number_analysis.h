// What the call records and the pipeline ask about numbers. The tables and rules behind it live in the data room.
#pragma once

#include <string>
#include <string_view>

namespace vorlix {

// The seven texts that a number analysis gives.
struct NumberTexts {
  std::string VW_Only;              // country and area code as they stand in the number
  std::string VW_NumberOnly;        // the rest
  std::string VW_FormatedFull;      // the number as shown, with place and country
  std::string VW_FormatedNumber;    // the number as shown, without names
  std::string VW_FormatedLocation;  // place (country)
  std::string VW_StateName;
  std::string VW_CityName;
};

class NumberAnalysis {
 public:
  virtual ~NumberAnalysis() = default;
  // The normal form of a number as a line delivered it. source: 0 CAPI and simulation, 16 router, 32 NCID.
  virtual std::string fVW(int source, const std::string& rawNumber) = 0;
  // The analysis of a number in normal form.
  virtual NumberTexts GetOVW(const std::string& number) = 0;
};

// Without tables: a number is its own normal form and shows as it is.
class PlainNumbers : public NumberAnalysis {
 public:
  std::string fVW(int, const std::string& rawNumber) override { return rawNumber; }
  NumberTexts GetOVW(const std::string& number) override {
    NumberTexts texts;
    texts.VW_FormatedFull = texts.VW_FormatedNumber = number;
    return texts;
  }
};

// The word under which a call without a number travels, "Unbekannt" (DeclareAll_Const_Unknown).
std::string UnknownNumberWord();
// True for a text that contains that word, in any case; false for an empty text.
bool IsUnknownNumber(std::string_view number);

}  // namespace vorlix

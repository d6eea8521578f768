// The light sister of oDataCall: one number with its name and analysis, for the number cache and the book's index.
#pragma once

#include <cstdint>
#include <string>

#include "core/number_analysis.h"
#include "services/clsCollection.h"

namespace vorlix {

class oDataNumber : public CollectionItem, public NumberTexts {
 public:
  std::string DataNumber;
  std::int16_t EntryType = 0;
  std::int16_t NameMode = 0;
  std::int16_t CallCountIn = 0;
  std::int16_t CallCountOut = 0;
  std::string Name;
  std::string Address;
  std::string BookTimeName;
};

}  // namespace vorlix

// What is known about area codes beyond the geocoding data. UTF-8, like that.
#pragma once

#include "AreaTree.h"

namespace area_codes {

// The lengths of a country's codes, from its numbering plan where the data alone would split them wrongly.
CodeLengths CodeLengthsOf(int country);

// Mends faults of the data, gives great cities their German names, and adds codes that stand for a service instead of a
// place.
void AddKnownFacts(int country, Rows& rows);

}  // namespace area_codes

// What the about box says.
#pragma once

#include <string>

#include "screens/LineStates.h"

namespace vorlix {

struct AboutFacts {
  std::string version;  // "Vorlix v3.00"
  std::string dataFolder;
  LineStates lines;
  std::string toolkit;  // "Qt 6.4.2"; empty without one
};
// Lines end with CR LF.
std::string AboutText(const AboutFacts& facts);

}  // namespace vorlix

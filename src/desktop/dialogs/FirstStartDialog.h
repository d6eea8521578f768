// The questions of a first start on one page.
#pragma once

#include "screens/FirstStart.h"

namespace vorlix {

class FirstStartDialog : public FirstStartPage {
 public:
  // Lets the loop run until the page is left; the end of the program leaves it.
  bool Fill(FirstStartForm& form) override;
};

}  // namespace vorlix

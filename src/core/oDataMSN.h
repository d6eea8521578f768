// One own number of the line with its switches.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "services/clsCollection.h"

namespace vorlix {

class oDataMSN : public CollectionItem {
 public:
  std::string MSN;
  std::string Alias;
  std::int32_t color = 0;
  std::string MailAdds;
  bool BlockByMSN_b_BlockNoNumber = false;
  std::int16_t BlockByMSN_i_Kennung = 0;
  std::int16_t BlockByMSN_b_BlockMainMenu = 0;  // 0 none, 1 mnuBlockAll, 2 mnuBlockAllByTime, 3 both
  bool BlockByMSN_b_BlockNoName = false;
  bool FunctionsByMSN_b_Display = false;
  bool FunctionsByMSN_b_LogJournal = false;
  bool FunctionsByMSN_b_LogBook = false;
  bool FunctionsByMSN_b_Prog = false;
  bool FunctionsByMSN_b_Sound = false;
  std::int16_t FunctionsByMSN_i_HotKeyID = 0;  // from 1; 0 is none

  std::shared_ptr<CollectionItem> Clone() const override { return std::make_shared<oDataMSN>(*this); }
};

}  // namespace vorlix

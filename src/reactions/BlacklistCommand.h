// The command of every window that shows a call: its number goes to the blacklist and leaves the telephone book.
#pragma once

#include <string>

#include "data/modBook.h"

namespace vorlix {

class BlacklistCommand : public BlackListAdding {
 public:
  // Both must outlive the object. The book itself must keep the plain list: it passes on what it has removed already.
  BlacklistCommand(BlackListAdding& list, modBook& book) : list_(list), book_(book) {}

  // Nothing happens for a call without a number.
  void mnuBlackList_Click(const oDataCall& call) { FuncBlackList_NumberToList(call.DataNumber(), call.Name()); }
  void FuncBlackList_NumberToList(const std::string& number, const std::string& name) override;

 private:
  BlackListAdding& list_;
  modBook& book_;
};

}  // namespace vorlix

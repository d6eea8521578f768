#include "reactions/BlacklistCommand.h"

#include "services/clsErrorHandling.h"

namespace vorlix {

void BlacklistCommand::FuncBlackList_NumberToList(const std::string& number, const std::string& name) {
  Trapped(
      "BlacklistCommand.mnuBlackList_Click",
      [&] {
        if (number.empty()) return;
        list_.FuncBlackList_NumberToList(number, name);
        if (book_.BookCollection().RemoveByKeyName(number)) book_.BookSave();
      },
      number);
}

}  // namespace vorlix

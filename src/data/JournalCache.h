// What the journal knows about numbers while it is read: each number costs one look-up in the book and one analysis for
// each load, however many lines it has. Emptied whenever names may have changed.
#pragma once

#include <string>

#include "core/oDataCall.h"
#include "services/clsCollection.h"

namespace vorlix {

// What keeps the journal window and the archiving apart.
struct JournalFlags {
  bool JournalLoading = false;    // the window fills its list
  bool JournalArchiving = false;  // JournalAuslagern runs
};

class JournalCache {
 public:
  void SpeedBuffer_Journal_Clear();

  // Keeps name, address and card of `source`, which may be nothing, and the formatted number. An entry that is there
  // is overwritten only by values that are not empty.
  void SpeedBuffer_Journal_Set(const std::string& number, const oDataCall* source, const std::string& formatted);

  // Fills the call from the entry of its number, if there is one.
  void SpeedBuffer_Journal_Get(oDataCall& call) const;

  // The card's fields, all of them.
  static void SpeedBuffer_Journal_BookItemCopy(oDataCall& target, const oDataCall& source);

 private:
  clsCollection entries_;
};

}  // namespace vorlix

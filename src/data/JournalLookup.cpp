#include "data/JournalLookup.h"

#include <utility>

namespace vorlix {

void JournalLookup::Fill(oDataCall& call) {
  cache_.SpeedBuffer_Journal_Get(call);
  if (!call.Name().empty()) return;
  book_.GetNumberData(call, false, false);
  // A number that no table knows is kept nowhere else: each of its lines would go through all tables again.
  if (!flags_.JournalLoading || call.IsLoadedVW()) return;
  const std::string formatted = call.VW_FormatedFull();
  cache_.SpeedBuffer_Journal_Set(call.DataNumber(), &call, formatted);
}

void JournalLookup::LoadBegins() {
  if (loads_++ > 0) return;
  wasLoading_ = std::exchange(flags_.JournalLoading, true);
  cache_.SpeedBuffer_Journal_Clear();
}

void JournalLookup::LoadEnds() {
  if (--loads_ == 0) flags_.JournalLoading = wasLoading_;
}

}  // namespace vorlix

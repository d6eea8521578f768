#include "screens/call_texts.h"

#include "services/text.h"

namespace vorlix {

const std::string& NumberView(const oDataCall& call) {
  return call.VW_FormatedFull().empty() ? call.DataNumber() : call.VW_FormatedFull();
}

std::string PartyOf(const oDataCall& call) {
  const std::string& number = NumberView(call);
  return call.NameMode == kNamed ? call.Name() + " (" + number + ")" : number;
}

std::string OwnNumberOf(const oDataCall& call) {
  return call.MSNAlias.empty() || call.MSNAlias == call.MSN ? call.MSN : call.MSNAlias + " (" + call.MSN + ")";
}

std::string PeriodText(std::int32_t seconds) {
  return std::to_string(seconds / 3600) + ":" + Padded(seconds / 60 % 60, 2) + ":" + Padded(seconds % 60, 2);
}

}  // namespace vorlix

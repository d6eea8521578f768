#include "screens/ShownCalls.h"

#include "core/RejectReason.h"

namespace vorlix {

std::vector<std::shared_ptr<oDataCall>> ShownCalls::Read() const {
  std::vector<std::shared_ptr<oDataCall>> calls;
  for (const auto& entry : state_.ActiveCallList.GetCollection()) {
    auto call = state_.ActiveCallList.ItemByKeyAs<oDataCall>(entry.key);
    if (call && !IsHidden(*call)) calls.push_back(std::move(call));
  }
  return calls;
}

bool ShownCalls::IsHidden(const oDataCall& call) const {
  // One refused by hand has been seen.
  const bool isRefused = call.Blocked && call.BlockFunction != kRejectUser;
  return (isRefused && settings_.General.RejectedCallsDontShow) ||
         !ownNumbers_.IsMSNFunctionActiv(call.MSN, kMSNDisplay);
}

bool ShownCalls::IsInProgress(const oDataCall& call) const {
  const auto listed = state_.ActiveCallList.ItemByKeyAs<oDataCall>(std::to_string(call.PLCI));
  return listed && IsSame(*listed, call);
}

std::shared_ptr<oDataCall> ShownCalls::Listed(int place) const {
  if (place < 0) return nullptr;
  return state_.ActiveCallList.ItemByIndexAs<oDataCall>(static_cast<std::size_t>(place) + 1);
}

}  // namespace vorlix

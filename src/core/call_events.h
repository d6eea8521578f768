// The entry of the call pipeline, as the line sources see it: a small set of numbered events.
#pragma once

#include <cstdint>
#include <string>

#include "services/DateTime.h"

namespace vorlix {

// Who reports; the values are also the ids of the helper programs.
enum CallSource : int { kSourceCAPI = 0, kSourceAVM = 16, kSourceNCID = 32, kSourceTAPI = 64 };

enum CallEvent : int {
  kEventRouterLost = 0,
  kEventRouterUp = 1,
  kEventNCIDLost = 2,
  kEventNCIDUp = 3,
  kEventCAPIFileMissing = 4,
  kEventCAPINotInstalled = 5,
  kEventCAPIIncompatible = 6,
  kEventCAPITooManyApps = 7,
  kEventCAPIRegistered = 8,
  kEventCAPIInitEnd = 9,
  kEventCAPIListenFailed = 10,
  kEventLock = 11,  // a CAPI indication is about to be worked on
  kEventNewCall = 12,
  kEventNewCallEnd = 13,  // the section of the new call is finished
  kEventCallEnd = 14,
  kEventConnectActive = 15,  // a call that we took ourselves is connected
};

class CallEvents {
 public:
  virtual ~CallEvents() = default;
  // number is replaced by its normal form during kEventNewCall. Gives the time of the new call, for kEventNewCall only.
  virtual DateTime CAPI_FunctionsForwarder(int source, int event, std::int32_t PLCI, std::int16_t CIP,
                                           std::string& number, const std::string& MSN, bool simulated) = 0;

  // An event that carries no call.
  void Tell(int source, int event) {
    std::string none;
    CAPI_FunctionsForwarder(source, event, 0, 0, none, none, false);
  }
};

}  // namespace vorlix

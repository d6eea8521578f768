#include "core/CallPipeline.h"

#include <utility>

#include "core/RejectReason.h"
#include "core/pipeline_trace.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

CallPipeline::CallPipeline(PipelinePorts ports, PipelineState& state) : ports_(ports), state_(state) {
  ports_.timers.tmSoundRepeat->SetTick([this] { Trapped("fMain.tmSoundRepeat_Timer", [this] { SoundRepeat(); }); });
}

DateTime CallPipeline::CAPI_FunctionsForwarder(int source, int event, std::int32_t PLCI, std::int16_t CIP,
                                               std::string& number, const std::string& MSN, bool simulated) {
  return Trapped(
      "fMain.CAPI_FunctionsHelper",
      [&] {
        return CAPI_FunctionsHelper({source, event, PLCI, CIP, number, MSN, simulated});
      },
      source, event, PLCI, CIP, number, MSN, simulated);
}

DateTime CallPipeline::CAPI_FunctionsHelper(const Event& event) {
  options_ = ports_.switches.Read();
  switch (event.event) {
    case kEventRouterLost:
    case kEventNCIDLost:
      SocketState(false);
      break;
    case kEventRouterUp:
      trace::AVM("AVM Debug Test Init OK");
      if (!options_.CallMode_CAPI) CheckOwnPrefix();
      SocketState(true);
      break;
    case kEventNCIDUp:
      trace::NCID("NCID Debug Test Init OK");
      SocketState(true);
      break;
    case kEventCAPIFileMissing:
    case kEventCAPINotInstalled:
    case kEventCAPIIncompatible:
    case kEventCAPITooManyApps:
      DriverFailure(event);
      break;
    case kEventCAPIRegistered:
      DriverRegistered();
      break;
    case kEventCAPIInitEnd:
      DriverInitEnd();
      break;
    case kEventCAPIListenFailed:
      ListenFailed();
      break;
    case kEventLock:
      Lock();
      break;
    case kEventNewCall:
      return NewCall(event);
    case kEventNewCallEnd:
      Unlock();
      break;
    case kEventCallEnd:
      CallEnd(event);
      break;
    case kEventConnectActive:
      ConnectActive(event);
      break;
    default:
      break;
  }
  return {};
}

CallPipeline::Passage CallPipeline::PassageOf(std::shared_ptr<oDataCall> call, bool simulated) {
  Passage passage;
  passage.display = ports_.ownNumbers.IsMSNFunctionActiv(call->MSN, kMSNDisplay);
  passage.log = ports_.ownNumbers.IsMSNFunctionActiv(call->MSN, kMSNLogJournal);
  // A call that was refused by hand is on the display, and has to come to its end there.
  passage.hide = options_.RejectedCallsDontShow && call->Blocked && call->BlockFunction != kRejectUser;
  passage.noBatch = options_.RejectedCallsDontBatch && call->Blocked;
  passage.mayWrite = options_.SimWrite || !simulated;
  passage.simulated = simulated;
  passage.call = std::move(call);
  return passage;
}

std::shared_ptr<oDataCall> CallPipeline::FindCall(std::int32_t PLCI) const {
  return state_.ActiveCallList.ItemByKeyAs<oDataCall>(std::to_string(PLCI));
}

}  // namespace vorlix

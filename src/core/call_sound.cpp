// The sounds of a call, and the moment at which a call that we took is connected.
#include "core/CallPipeline.h"
#include "core/RejectReason.h"
#include "core/pipeline_trace.h"

namespace vorlix {
namespace {

constexpr int kMostRepeats = 6;
constexpr std::chrono::milliseconds kRepeatInterval{3000};

}  // namespace

// Comes only for blocked calls, which the program takes itself: the caller hears the line being taken.
void CallPipeline::ConnectActive(const Event& event) {
  const auto call = FindCall(event.PLCI);
  if (!call) return;
  trace::CAPI("CAPIConActive");
  PlayBlockSound(*call);
  // The mark hangs on RejectedCallsDontBatch, not on RejectedCallsDontShow as everywhere else: users know it so.
  const bool unmarked = call->Blocked && options_.RejectedCallsDontBatch;
  if (ports_.ownNumbers.IsMSNFunctionActiv(call->MSN, kMSNDisplay) && !unmarked) {
    ports_.display.MarkBlocked(call->PLCI, ports_.blocking.FuncBlocking_GetDescription(call->BlockFunction));
  }
  // The source hangs a real call up right after this event; a simulated one ends itself.
  if (event.simulated) ports_.simulation.cmdTrennen_Click(event.PLCI);
}

void CallPipeline::PlayBlockSound(const oDataCall& call) {
  // Who refuses a call by hand needs no sound to know it.
  const bool silent = call.Fernwirk || !options_.ByBlock || (call.Blocked && options_.RejectedCallsDontShow) ||
                      call.BlockFunction == kRejectUser;
  if (silent || !ports_.ownNumbers.IsMSNFunctionActiv(call.MSN, kMSNSound)) return;
  if (ports_.schedules.IsTimePeriodActiv("<SoundByBlock>", true)) ports_.sound.Play(options_.SndBlock);
}

void CallPipeline::SoundRepeat() {
  options_ = ports_.switches.Read();
  if (options_.Repeat && state_.SoundRepeatCount < kMostRepeats) {
    ++state_.SoundRepeatCount;
    ports_.timers.tmSoundRepeat->SetInterval(kRepeatInterval);
  } else {
    state_.SoundRepeatCount = 0;
    ports_.timers.tmSoundRepeat->SetEnabled(false);
  }
  if (ports_.schedules.IsTimePeriodActiv("<SoundByCall>", true)) PlayCallSound();
}

void CallPipeline::PlayCallSound() {
  if (options_.PersonalUse && ports_.sound.PlayPersonal(state_.LastNumber)) return;
  if (!options_.PersonalFail) return;
  const bool vip = !options_.SndVipCall.empty() && ports_.sound.IsVip(state_.LastNumber);
  ports_.sound.Play(vip ? options_.SndVipCall : options_.SndCall);
}

}  // namespace vorlix

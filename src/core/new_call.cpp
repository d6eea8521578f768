// A new call: looked up, judged, shown and reported, step by step.
#include "core/CallPipeline.h"
#include "core/RejectReason.h"
#include "core/pipeline_trace.h"

namespace vorlix {

DateTime CallPipeline::NewCall(const Event& event) {
  trace::NewCall("+++");
  trace::NewCall("Check for display");
  event.number = ports_.numbers.fVW(event.source, event.number);
  state_.LastNumber = event.number;
  trace::NewCall("Init data class");
  const std::shared_ptr<oDataCall> call = MakeCall(event);
  trace::NewCall("Check telecontrol mode");
  ports_.teleControl.FernwirkAction(*call);
  trace::NewCall("Search book data");
  const bool mayWrite = options_.SimWrite || !event.simulated;
  ports_.book.GetNumberData(*call, ports_.ownNumbers.IsMSNFunctionActiv(event.MSN, kMSNLogBook), mayWrite);
  call->GetMSNData(ports_.ownNumbers.Table());
  if (!call->Fernwirk) JudgeCall(*call);
  call->Active = !call->Blocked;

  const Passage passage = PassageOf(call, event.simulated);
  trace::NewCall("Hide rejected calls");
  trace::NewCall("No mail rejected calls");
  StopClock(passage);
  CopyCall(passage);
  trace::NewCall("Check/Make batch data");
  state_.ActiveCallList.Add(call);
  // A remote-control call produces no export, mail or program start.
  if (!call->Fernwirk) {
    StartExport();
    MailAtStart(passage);
    StartProgram(passage);
  }
  ShowCall(passage);
  RejectCall(passage);
  RingCall(passage);
  ShowCard(passage);
  OpenMaps(passage);
  trace::NewCall("---");
  return call->CallDateTime;
}

std::shared_ptr<oDataCall> CallPipeline::MakeCall(const Event& event) {
  auto call = std::make_shared<oDataCall>(&ports_.numbers);
  call->Key = std::to_string(event.PLCI);
  call->DataNumber(event.number);
  call->CallDateTime = ports_.loop.GetClock().Now();
  call->MSN = event.MSN;
  call->PLCI = event.PLCI;
  call->CIP = event.CIP;
  return call;
}

void CallPipeline::JudgeCall(oDataCall& call) {
  ports_.blocking.FuncBlocking_GetStatus(call);
  BlockByMainMenu(call);
}

// The switches concern calls that no rule has refused: the hours of the second must not free one.
void CallPipeline::BlockByMainMenu(oDataCall& call) {
  const int menu = call.MSN_BlockMainMenu;
  if (call.Blocked) return;
  if (options_.mnuBlockAll && (menu == 1 || menu == 3)) {
    trace::Blocking("Block by main menu");
    call.Blocked = true;
    call.BlockFunction = kRejectAll;
  } else if (options_.mnuBlockAllByTime && (menu == 2 || menu == 3)) {
    trace::Blocking("Block by main menu (check time)");
    call.Blocked = ports_.schedules.IsTimePeriodActiv("<BlockAll>", true);
    if (!call.Blocked) return;
    trace::Blocking("Block by main menu (time)");
    call.BlockFunction = kRejectAll;
  }
}

// The clock must not repaint over a caller.
void CallPipeline::StopClock(const Passage& passage) {
  if (!passage.display || passage.hide) return;
  trace::NewCall("Clock stop");
  ports_.timers.tmClock->SetEnabled(false);
}

void CallPipeline::CopyCall(const Passage& passage) {
  const bool onDemand = options_.CopyOption == 1 && options_.CopyOptionMode != 0;
  if (passage.call->Fernwirk || options_.CopyOption == 0 || passage.hide || onDemand) return;
  ports_.copy.CopyFunctionNew(*passage.call);
}

void CallPipeline::StartExport() {
  trace::NewCall("Check/Make export");
  if (!options_.Export) return;
  trace::Export("#### New call #########################");
  trace::Export("Call in - Write data A help file");
  ports_.records.WriteCallActiveData(state_.ActiveCallList);
  trace::Export("Call in - Start export A");
  ports_.exports.EnableExportStart(1);
}

void CallPipeline::MailAtStart(const Passage& passage) {
  const bool wanted = options_.SendPrio && options_.SendAll && options_.MailActive;
  if (!wanted || options_.mnuNoFunctionMail || passage.noBatch) return;
  trace::NewCall("Mail check time");
  if (!ports_.schedules.IsTimePeriodActiv("<MailSend>", true)) return;
  trace::NewCall("Mail add");
  const std::string data = ports_.records.GetCallDataAsMailString(*passage.call);
  if (ports_.mail.FuncMail_AddMailToCollection(data, passage.call->MSN)) ports_.mail.FuncMail_MailSend("", "");
}

void CallPipeline::StartProgram(const Passage& passage) {
  if (options_.mnuNoFunctionBatch || passage.noBatch || !options_.Run) return;
  trace::NewCall("Run batch");
  const oDataCall& call = *passage.call;
  if (!ports_.ownNumbers.IsMSNFunctionActiv(call.MSN, kMSNProg)) return;
  const bool searched = call.Name().empty() && options_.AutoSearch;
  const bool waits = searched && options_.RunInversDelay;
  const bool twice = searched && !waits && options_.RunInversRefresh;
  ports_.programs.Add(
      {call.DataNumber(), call.DataNumber(), call.CallDateTime, call.MSN, call.Name(), call.Address(), call.CIP, waits},
      waits   ? RunTiming::kAfterSearch
      : twice ? RunTiming::kNowAndAfterSearch
              : RunTiming::kNow);
}

void CallPipeline::ShowCall(const Passage& passage) {
  ports_.timers.tmDisplayAutoReset->SetEnabled(false);
  if (ports_.journalWindow.IsOpen() && options_.ViewDataByCall && !passage.hide) {
    ports_.journalWindow.ViewDataByCall(*passage.call);
  }
  trace::NewCall("Check for display");
  if (passage.display && !passage.hide) {
    trace::NewCall("Refresh display");
    ShowDisplay(passage.mayWrite);
  }
  if (!options_.HideAllw && !passage.hide) ports_.timers.tmHide->SetEnabled(false);
}

// Blocking on the line means taking the call and dropping it at once. Whatever the source: where no application is
// registered with a driver, the response reaches no line.
void CallPipeline::RejectCall(const Passage& passage) {
  if (!passage.call->Blocked) return;
  trace::NewCall("Call reject");
  ports_.capi.CAPIResponse(true, passage.call->PLCI, passage.simulated, 1);
}

void CallPipeline::RingCall(const Passage& passage) {
  if (passage.call->Blocked) return;
  ports_.timers.tmSoundRepeat->SetInterval(std::chrono::milliseconds(1));
  state_.SoundRepeatCount = 0;
  if (options_.ByCall) {
    trace::NewCall("Play sound");
    if (ports_.ownNumbers.IsMSNFunctionActiv(passage.call->MSN, kMSNSound)) {
      ports_.timers.tmSoundRepeat->SetEnabled(true);
    }
  }
  if (!passage.display) return;
  const int place = static_cast<int>(state_.ActiveCallList.Count()) - 1;
  ports_.display.ButtonEnableBell(place, true);
  if (options_.CallMode_CAPI) {
    ports_.display.ButtonEnableHangUp(place, HangUpMode::kStop, true);
  } else {
    ports_.display.ButtonEnableHangUp(place, HangUpMode::kEraser, false);  // a socket call cannot be hung up
  }
}

// The caller's card must not be hidden behind the display.
void CallPipeline::ShowCard(const Passage& passage) {
  trace::NewCall("Check/Make vCard");
  if (ports_.cardWindow.IsOpen() && passage.display && !passage.hide) ports_.cardWindow.BringVcardToTop();
}

void CallPipeline::OpenMaps(const Passage& passage) {
  const std::string& address = passage.call->Address();
  if (address.empty() || options_.mnuSilentMode || ports_.maps.IsForbidden() || passage.hide) return;
  if (options_.AutoOpenPlan) ports_.maps.GotoMaps(address, false);
  if (options_.AutoOpenRoute) ports_.maps.GotoMaps(address, true);
}

}  // namespace vorlix

// The end of a call: its mail, its journal line, its way out of the display.
#include "core/CallPipeline.h"
#include "core/pipeline_trace.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {

void CallPipeline::CallEnd(const Event& event) {
  trace::EndFrame("+++");
  // A call that was refused before it came here is not in the list.
  if (const auto call = FindCall(event.PLCI)) {
    const Passage passage = PassageOf(call, event.simulated);
    call->NewCall = true;
    if (passage.mayWrite) WriteEnd(passage);
    trace::CallEnd("Bevore remove");
    state_.ActiveCallList.RemoveByKeyName(call->Key);
    trace::CallEnd("After remove");
    if (state_.ActiveCallList.Count() > 0) {
      ShowOtherCalls(passage);
    } else {
      LastCallEnded(passage);
    }
    EndMaxiDisplay(passage);
    if (!options_.HideAllw && !passage.hide) ports_.timers.tmHide->SetEnabled(false);
    if (passage.mayWrite) {
      EndExports(passage);
      TellWindows(passage);
    }
  }
  trace::EndFrame("---");
}

// The one point where an incoming call gets its journal line, blocked or not.
void CallPipeline::WriteEnd(const Passage& passage) {
  const oDataCall& call = *passage.call;
  const bool sentAtStart = options_.SendPrio && options_.SendAll;
  if (!sentAtStart && !options_.mnuNoFunctionMail && !call.Fernwirk && !passage.noBatch && options_.MailActive) {
    trace::CallEnd("Mail add");
    ports_.mail.FuncMail_AddMailToCollection(ports_.records.GetCallDataAsMailString(call), call.MSN);
  }
  if (!passage.log) return;
  const std::string line = ports_.records.GetCallDataAsFileString(call);
  trace::JournalWrite("Call end - Write data J BEGIN");
  ports_.records.WriteCallDataToJournalFile(line);
  trace::JournalWrite("Call end - Write data J END");
}

void CallPipeline::ShowOtherCalls(const Passage& passage) {
  trace::CallEnd("Other calls active");
  if (!passage.display || passage.hide) return;
  ports_.timers.tmClock->SetEnabled(false);
  ShowDisplay();
}

void CallPipeline::LastCallEnded(const Passage& passage) {
  trace::CallEnd("No other calls");
  if (options_.CallMode_CAPI && options_.CAPIReset) {
    trace::CallEnd("CAPI reset");
    ports_.capi.CAPIReset();
  }
  ports_.timers.tmSoundRepeat->SetEnabled(false);
  EndBalloon(passage);
  if (passage.display && !passage.hide) {
    trace::CallEnd("Button reset");
    ports_.display.ButtonEnableHangUp(0, HangUpMode::kEraser, true);
    ports_.display.ButtonEnableBell(0, false);
    trace::CallEnd("Bevore display refresh ");
    ports_.display.DisplayResize();
    trace::CallEnd("After display refresh");
  }
  SendEndMail(passage);
}

void CallPipeline::EndBalloon(const Passage& passage) {
  const std::string text = passage.call->Blocked
                               ? ports_.blocking.FuncBlocking_GetDescription(passage.call->BlockFunction)
                               : LoadLangKey("Display_Msg_CallNoActive", "Ruf nicht mehr aktiv!"_ansi);
  if (!options_.AsBaloon || passage.hide || !ports_.balloon.IsShown()) return;
  trace::CallEnd("Refresh tray");
  ports_.balloon.CreateTrayInfo(text, options_.HideTimeTray);
}

void CallPipeline::SendEndMail(const Passage& passage) {
  const bool wanted = !options_.SendPrio && options_.MailActive;
  if (!wanted || options_.mnuNoFunctionMail || passage.call->Fernwirk || passage.noBatch) return;
  trace::CallEnd("Mail");
  if (!ports_.schedules.IsTimePeriodActiv("<MailSend>", true)) return;
  const bool exists = ports_.search.Exists();
  trace::CallEnd(exists ? "Mail - Search active" : "Mail - Search inactive");
  if (exists && ports_.search.IsActive() && options_.AutoSearch && options_.MailInversDelay) {
    trace::CallEnd("Mail - Set timer");
    ports_.timers.tmMailWaitReverse->SetInterval(std::chrono::seconds(options_.InversDelayTime));
    ports_.timers.tmMailWaitReverse->SetEnabled(true);
    return;
  }
  trace::CallEnd("Mail - call send begin");
  ports_.mail.FuncMail_MailSend("", "");
  trace::CallEnd("Mail - call send end");
}

void CallPipeline::EndMaxiDisplay(const Passage& passage) {
  if (!ports_.maxiDisplay.IsOpen() || passage.hide) return;
  trace::CallEnd("MaxiDisplay is open");
  if (!ports_.maxiDisplay.IsVisible()) return;
  trace::CallEnd("MaxiDisplay is visible");
  if (options_.HideByCall) {
    ports_.maxiDisplay.Hide();
  } else {
    ports_.maxiDisplay.SetEndMark(passage.call->Blocked ? EndMark::kBlocked : EndMark::kEnded);
  }
}

void CallPipeline::EndExports(const Passage& passage) {
  if (!passage.log) return;
  if (options_.Export) {
    trace::Export("Call end - Write data A help file");
    ports_.records.WriteCallActiveData(state_.ActiveCallList);
    trace::Export("Call end - Start export A");
    ports_.exports.EnableExportStart(2);
  }
  if (options_.ExportCSV) {
    trace::Export("Call end - Start export C");
    ports_.exports.EnableExportStart(3);
  }
}

void CallPipeline::TellWindows(const Passage& passage) {
  if (ports_.journalWindow.IsOpen()) {
    trace::CallEnd("Journal is open");
    if (options_.ViewDataByCall && !passage.hide) {
      trace::CallEnd("Journal call reset");
      ports_.journalWindow.CallReset(passage.call->PLCI);
    }
    if (passage.log) {
      trace::CallEnd("Journal direct add");
      ports_.journalWindow.AddItemToDataSource(*passage.call);
    }
  }
  if (ports_.newCallsWindow.IsOpen()) {
    ports_.newCallsWindow.AddItemToDataSource(*passage.call);
  } else if (options_.NewCalls && passage.display && !passage.hide && passage.log) {
    trace::CallEnd("Load new calls");
    ports_.newCallsWindow.loadNewCalls();
  }
}

}  // namespace vorlix

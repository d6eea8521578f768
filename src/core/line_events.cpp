// The events that tell how the lines stand, and the lock around a new call.
#include <chrono>

#include "core/CallPipeline.h"
#include "core/pipeline_trace.h"
#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

std::string NotFound() {
  return LoadLangKey("Display_Msg_CAPINotFound", "CAPI2.0 wurde nicht gefunden!"_ansi);
}
std::string RegisterFail() {
  return LoadLangKey("Display_Msg_CAPIRegisterFail", "Die Anmeldung bei der CAPI2.0 ist fehlgeschlagen!"_ansi);
}

// How long a call that has to wait sleeps before it looks again.
constexpr std::chrono::milliseconds kLockWait{20};

struct DriverMessage {
  bool silentByAuto;  // a start with the system must not stop on a box; a missing file does so all the same
  std::string_view trace;
  std::string first, second;
};

DriverMessage MessageOf(int event) {
  switch (event) {
    case kEventCAPIFileMissing:
      return {false, "Msg:DLLError",
              LoadLangKey("Display_Msg_CAPIFileNotFound", "Die CAPI2.0-Bibliothek wurde nicht gefunden!"_ansi),
              LoadLangKey("Display_Msg_CAPIHardwareRequired",
                          "Für diese Betriebsart ist eine ISDN-Hardware mit CAPI2.0-Treiber erforderlich!"_ansi)};
    case kEventCAPINotInstalled:
      return {
          true, "Msg:Not found", NotFound(),
          LoadLangKey("Display_Msg_CAPINoHardwareDriver", "Es ist keine Hardware oder kein Treiber installiert!"_ansi)};
    case kEventCAPIIncompatible:
      return {true, "Msg:Not comp", RegisterFail(),
              LoadLangKey("Display_Msg_CAPIIncompatible", "Der Treiber ist nicht kompatibel!"_ansi)};
    default:
      return {true, "Msg:ToMany", RegisterFail(),
              LoadLangKey("Display_Msg_CAPIToManyApps", "Zu viele Anwendungen sind angemeldet!"_ansi)};
  }
}

}  // namespace

void CallPipeline::SocketState(bool connected) {
  state_.SocketConnected = connected;
  ShowDisplay();
}

void CallPipeline::ShowDisplay(bool search) {
  ports_.display.DisplayUpdate(search);
  ports_.display.DisplayResize();
}

void CallPipeline::DriverFailure(const Event& event) {
  const DriverMessage message = MessageOf(event.event);
  if (message.silentByAuto && options_.startedByAuto) {
    if (event.event == kEventCAPINotInstalled) {
      ports_.display.ChangeDisplayData(message.first);
      ports_.display.DisplayWidth();
    }
    return;
  }
  ShowDisplay();
  trace::CAPI("Test " + std::string(message.trace));
  Message(message.first, message.second);
}

void CallPipeline::DriverRegistered() {
  trace::CAPI("Test Init OK");
  CheckOwnPrefix();
  ShowDisplay();
}

void CallPipeline::DriverInitEnd() {
  trace::CAPI("Test Init end");
  ErrorHandling().LogDebug_CAPI("CAPI Start");
  ports_.timers.tmCAPI->SetEnabled(true);  // only from here on is the driver polled
}

void CallPipeline::ListenFailed() {
  trace::CAPI("Test Listen");
  Message(RegisterFail(),
          LoadLangKey("Display_Msg_CallReactionNotPoss", "Eine Reaktion auf Anrufe ist nicht möglich!"_ansi));
}

// Asks for the country and area code of the user's line as long as they have never been given correctly.
void CallPipeline::CheckOwnPrefix() {
  const bool wrong = options_.myVWL.starts_with("00") || options_.myVWO.starts_with("0") || options_.myVWO.empty() ||
                     options_.myVWL.empty();
  // From the loop: the questions wait for a person, and the source that has just come up must not wait with them.
  if (wrong) ports_.loop.Post([this] { ports_.prefixInput.Open(); });
}

void CallPipeline::Message(const std::string& first, const std::string& second) {
  ports_.messages.MsgBoxNew(first + std::string(kLineEnd) + second, kMsgWarning, {});
}

// Only a driver's call waits here: its look-up must not begin while another's runs.
void CallPipeline::Lock() {
  while (state_.ActiveCallList.Count() > 0 && state_.PipelineBusy && !state_.ExitInProgress) {
    ports_.loop.WaitPending(kLockWait);
  }
  state_.PipelineBusy = true;
  // A change of the book's file must not reload the book while a call is being looked up.
  ports_.timers.tmFileWatch->SetEnabled(false);
}

void CallPipeline::Unlock() {
  ports_.timers.tmFileWatch->SetEnabled(options_.BookRefresh);
  state_.PipelineBusy = false;
}

}  // namespace vorlix

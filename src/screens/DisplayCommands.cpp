#include "screens/DisplayCommands.h"

#include "core/RejectReason.h"
#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

void Tell(const std::function<void()>& hook) {
  if (hook) hook();
}

}  // namespace

std::shared_ptr<oDataCall> DisplayCommands::CallOf(std::size_t line) const {
  return ports_.state.ActiveCallList.ItemByIndexAs<oDataCall>(line + 1);
}

bool DisplayCommands::ClickFromToolbar() {
  for (std::size_t line = 0; line < ports_.state.ActiveCallList.Count(); ++line) {
    const auto call = CallOf(line);
    if (call && !call->Blocked) return Reject(line);
  }
  return false;
}

bool DisplayCommands::RejectCall(std::int32_t PLCI) {
  for (std::size_t line = 0; line < ports_.state.ActiveCallList.Count(); ++line) {
    const auto call = CallOf(line);
    if (call && call->PLCI == PLCI) return Reject(line);
  }
  return false;
}

// The line is taken and dropped, as for a call that a rule refuses. A call that rang before the simulation began is a
// real one.
bool DisplayCommands::Reject(std::size_t line) {
  return Trapped(
      "fMain.ClickFromToolbar",
      [&] {
        const auto call = CallOf(line);
        if (!call || call->Blocked) return false;
        ports_.display.ButtonEnableHangUp(static_cast<int>(line), HangUpMode::kStop, false);
        if (!ports_.settings.General.CallMode_CAPI) return false;
        call->Blocked = true;
        call->BlockFunction = kRejectUser;
        call->Active = false;
        ports_.capi.CAPIResponse(true, call->PLCI, ports_.simulation.HasCall(call->PLCI), 1);
        return true;
      },
      line);
}

void DisplayCommands::ToggleReject(bool& mark) {
  Toggle(mark);
  ports_.display.DisplayResize();
}

void DisplayCommands::mnuSilentMode_Click() {
  Toggle(ports_.settings.General.SilentMode);
  Tell(ports_.silentModeChanged);
}

void DisplayCommands::mnuReset_Click() {
  Tell(ports_.resetDisplay);
}

void DisplayCommands::mnuCAPIReset_Click() {
  if (ports_.settings.General.CallMode_CAPI) Tell(ports_.resetCAPI);
}

}  // namespace vorlix

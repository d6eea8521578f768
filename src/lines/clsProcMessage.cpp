#include "lines/clsProcMessage.h"

#include <charconv>
#include <utility>

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {

void clsProcMessage::Init(WindowHandle ownWindow, int source, bool debug, const std::string& path) {
  ownWindow_ = ownWindow;
  source_ = source;
  debug_ = debug;
  path_ = path;
  tickCounter_ = 0;
  installed_ = true;
}

void clsProcMessage::Terminate() {
  installed_ = false;
}

bool clsProcMessage::SendMsgToProc(HelperCommand command, std::string_view text) {
  return Trapped(
      "clsProcMessage_SendMsgToProc",
      [&] { return target_ != 0 && link_.Send(target_, static_cast<std::uint32_t>(source_) | command, text); },
      static_cast<int>(command), text);
}

bool clsProcMessage::StartRemoteFile() {
  return Trapped("clsProcMessage_StartRemoteFile", [&] {
    if (path_.empty()) return false;
    std::vector<std::string> arguments{std::to_string(ownWindow_)};
    if (debug_) arguments.emplace_back("debug");
    const IoResult started = processes_.Start(path_, arguments);
    // The watchdog tries it again and again.
    if (!std::exchange(startFailed_, !started) && startFailed_) {
      ErrorHandling().ErrorLogForceWrite("clsProcMessage_StartRemoteFile", {}, started.error, started.text);
    }
    return !startFailed_;
  });
}

bool clsProcMessage::TimerTick() {
  if (!installed_ || ++tickCounter_ < kWatchdogTicks) return false;
  tickCounter_ = 0;
  return true;
}

void clsProcMessage::LifeSign(MessageLink::Peer peer, const std::string& handle) {
  WindowHandle target = 0;
  const char* end = handle.data() + handle.size();
  const auto [parsed, error] = std::from_chars(handle.data(), end, target);
  if (error != std::errc{} || parsed != end) return;
  tickCounter_ = 0;
  target_ = target;
  peer_ = peer;
  SendMsgToProc(kHelperLifeSign, std::to_string(ownWindow_));
}

}  // namespace vorlix

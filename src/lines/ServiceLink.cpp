#include "lines/ServiceLink.h"

#include <utility>

#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

enum LinkError : int { kFormatError = 1, kModeError = 6, kOverflow = 7, kRefreshError = 8, kMemoryOverflow = 11 };

std::string_view LinkErrorText(int code) {
  switch (code) {
    case kFormatError:
      return "Format-Error";
    case kModeError:
      return "Mode-Error";
    case kOverflow:
      return "Link-Overflow";
    case kRefreshError:
      return "Refresh-Error";
    case kMemoryOverflow:
      return "Memory-Overflow";
    default:
      return {};
  }
}

}  // namespace

std::string GetServiceStatusName(ServiceState state) {
  switch (state) {
    case ServiceState::kNotInstalled:
      return LoadLangKey("ModuleServices_Info_NotInstalled", "Service nicht installiert!"_ansi);
    case ServiceState::kStopped:
      return LoadLangKey("ModuleServices_Info_Ready", "Service bereit zum Start!"_ansi);
    case ServiceState::kStartPending:
      return LoadLangKey("ModuleServices_Info_Start", "Service wird gestartet!"_ansi);
    case ServiceState::kStopPending:
      return LoadLangKey("ModuleServices_Info_Stop", "Service wird angehalten!"_ansi);
    case ServiceState::kRunning:
      return LoadLangKey("ModuleServices_Info_Active", "Service ist aktiv!"_ansi);
    case ServiceState::kContinuePending:
      return LoadLangKey("ModuleServices_Info_Go", "Service wird fortgesetzt!"_ansi);
    case ServiceState::kPausePending:
      return LoadLangKey("ModuleServices_Info_PauseSet", "Service wird pausieren!"_ansi);
    case ServiceState::kPaused:
      return LoadLangKey("ModuleServices_Info_Pause", "Service pausiert!"_ansi);
  }
  return {};
}

ServiceLink::ServiceLink(Ports ports, const std::string& programFolder, const std::string& dataFolder)
    : ports_(std::move(ports)),
      program_(programFolder + "/Vorlixservice"),
      own_(HandleForText(dataFolder + "/" + std::string(kItem))) {
  ports_.timers.tmServiceDDE->SetTick([this] { tmServiceDDE_Timer(); });
  ports_.timers.tmServiceStart->SetTick([this] { tmServiceStart_Timer(); });
}

void ServiceLink::tmServiceDDE_Timer() {
  Trapped("fMain.tmServiceDDE_Timer", [&] {
    ports_.timers.tmServiceDDE->SetEnabled(false);
    if (!IsThere()) return;
    text_.clear();
    if (ports_.link.Own() == 0 && !ports_.link.Open(own_, *this)) return txtDDE_LinkError(kModeError);
    if (!ports_.link.Send(ServiceHandle(), kServiceOpen, std::to_string(own_))) txtDDE_LinkClose();
  });
}

void ServiceLink::OnMessage(MessageLink::Peer peer, std::uint32_t word, const std::string& text) {
  Trapped("fMain.txtDDE_LinkNotify", [&] {
    if (word != kServiceText) return txtDDE_LinkError(kFormatError);
    peer_ = peer;
    installed_ = true;
    isStarting_ = false;
    if (std::exchange(text_, text) != text) txtDDE_Change(Lower(text));
  });
}

void ServiceLink::txtDDE_Change(const std::string& text) {
  if (text == "vorlixok") {
    Log(LoadLangKey("Display_Info_Service_VorlixActive", "Kontrolle übernommen!"_ansi));
    LinkExecute("hallo");
  } else if (text == "vorlix") {
    RegisterFailed();
  } else if (text == "wait") {
    LinkExecute("ok");
  }
}

void ServiceLink::RegisterFailed() {
  Log(LoadLangKey("Display_Info_ServiceCAPIRegisterFail", "CAPI-Anmeldung durch Service nicht möglich!"_ansi));
  ports_.messages.MsgBoxForward(
      LoadLangKey("Display_Msg_ServiceCAPIRegisterFail",
                  "Der Service konnte sich nicht bei der CAPI2.0 anmelden!"_ansi) +
          std::string(kLineEnd) +
          LoadLangKey("Display_Msg_PersistsProblemDeactivate",
                      "Besteht das Problem weiter, deaktivieren Sie den Service in den Einstellungen!"_ansi),
      kMsgWarning, "Vorlix-NTService");
}

void ServiceLink::LinkExecute(std::string_view command) {
  if (!ports_.link.Send(ServiceHandle(), kServiceExecute, command)) txtDDE_LinkError(kRefreshError);
}

void ServiceLink::OnPeerGone(MessageLink::Peer peer) {
  if (peer != peer_) return;
  peer_ = 0;
  text_.clear();
  txtDDE_LinkClose();
}

void ServiceLink::txtDDE_LinkClose() {
  if (ports_.state.ExitInProgress) return;
  Log(LoadLangKey("Display_Info_ServiceNoAnswer", "Service antwortet nicht!"_ansi));
}

void ServiceLink::txtDDE_LinkError(int code) {
  Log(std::to_string(code) + " " + std::string(LinkErrorText(code)));
}

void ServiceLink::Log(std::string_view text) {
  if (ports_.isLogged()) ports_.logs.FileWrite_Log(kFileLog, "[Vorlix]  " + std::string(text), ports_.logCount());
}

void ServiceLink::ShowStatus(std::function<void(const std::string&)> show) {
  show_ = std::move(show);
  UpdateStatusTimer();
}

void ServiceLink::WantInstalled(bool wanted) {
  wanted_ = wanted;
  UpdateStatusTimer();
}

// A tick that has nothing to do is not set.
void ServiceLink::UpdateStatusTimer() {
  const bool isIdle = !show_ && !wanted_;
  ports_.timers.tmServiceStatus->SetTick(isIdle ? std::function<void()>() : [this] { Service_GetStatus(); });
}

// There is no manager to be asked: a service that speaks runs, and its file says whether there is one.
ServiceState ServiceLink::ServiceStatus() const {
  if (!IsThere() || installed_ == false) return ServiceState::kNotInstalled;
  if (peer_ != 0) return ServiceState::kRunning;
  return isStarting_ ? ServiceState::kStartPending : ServiceState::kStopped;
}

void ServiceLink::Service_GetStatus() {
  Trapped("fMain.Service_GetStatus", [&] {
    const auto wanted = std::exchange(wanted_, std::nullopt);
    UpdateStatusTimer();
    if (wanted && wanted != installed_ && IsThere() &&
        ports_.processes.Start(program_, {*wanted ? "-install" : "-uninstall"})) {
      installed_ = wanted;
    }
    const auto show = show_;  // it may end the showing
    if (show) show(GetServiceStatusName(ServiceStatus()));
  });
}

void ServiceLink::tmServiceStart_Timer() {
  Trapped("fMain.tmServiceStart_Timer", [&] {
    ports_.timers.tmServiceStart->SetEnabled(false);
    if (peer_ != 0 || !IsThere() || !ports_.processes.Start(program_, {})) return;
    isStarting_ = true;
    ports_.timers.tmServiceDDE->SetEnabled(true);
  });
}

}  // namespace vorlix

// The service "Vorlixservice", which may watch the line while nobody is logged on, and the taking over of the line from
// it when the program starts. Used only where the service's file lies in the program folder; without it this object
// opens no link, starts nothing and costs no wake-up.
//
// Over the local link a message's word says what its text is: the program opens the link with its own handle, the
// service tells its state, the program executes "hallo" and "ok".
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/CallPipeline.h"
#include "core/MainTimers.h"
#include "platform/FileStore.h"
#include "platform/MessageLink.h"
#include "platform/Processes.h"
#include "services/clsErrorHandling.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

enum ServiceWord : std::uint32_t {
  kServiceOpen = 1,     // program to service: talk to me; the text is the program's handle in decimal
  kServiceText = 2,     // service to program: how it stands
  kServiceExecute = 3,  // program to service
};

// The states that service managers know.
enum class ServiceState {
  kNotInstalled,
  kStopped,
  kStartPending,
  kStopPending,
  kRunning,
  kContinuePending,
  kPausePending,
  kPaused,
};
std::string GetServiceStatusName(ServiceState state);

class ServiceLink : public MessageLink::Receiver {
 public:
  static constexpr std::string_view kService = "Vorlix";
  static constexpr std::string_view kTopic = "Vorlix Service|VorlixService";
  static constexpr std::string_view kItem = "txtDDE";
  static constexpr std::string_view kFileLog = R"(\log\ntservice.log)";

  struct Ports {
    MessageLink& link;  // for this object alone
    Processes& processes;
    const FileStore& files;
    MainTimers& timers;
    LogStore& logs;
    modAll_MsgBox& messages;
    const PipelineState& state;
    std::function<bool()> isLogged;  // NTService of LogMode
    std::function<int()> logCount;   // kilobytes of the log
  };

  // Takes the ticks of the three service timers. All ports must outlive the object.
  ServiceLink(Ports ports, const std::string& programFolder, const std::string& dataFolder);

  // The handle that the service listens on, the same for all programs of this user.
  static WindowHandle ServiceHandle() { return HandleForText(kTopic); }

  // While `show` is set it gets the state's name once a second; an empty one ends that.
  void ShowStatus(std::function<void(const std::string& name)> show);
  // The service is to be installed or removed; done with the next look at its state.
  void WantInstalled(bool wanted);
  // Starts the service half a second later.
  void StartService() { ports_.timers.tmServiceStart->SetEnabled(true); }
  ServiceState ServiceStatus() const;
  // A fault of the link, by its code.
  void txtDDE_LinkError(int code);

  void OnMessage(MessageLink::Peer peer, std::uint32_t word, const std::string& text) override;
  void OnPeerGone(MessageLink::Peer peer) override;

 private:
  void tmServiceDDE_Timer();
  void tmServiceStart_Timer();
  void Service_GetStatus();
  void txtDDE_Change(const std::string& text);
  void txtDDE_LinkClose();
  void RegisterFailed();
  void LinkExecute(std::string_view command);
  void UpdateStatusTimer();
  bool IsThere() const { return ports_.files.Stat(program_).IsFile(); }
  void Log(std::string_view text);

  Ports ports_;
  std::string program_;
  WindowHandle own_;
  std::string text_;            // what the service told last
  MessageLink::Peer peer_ = 0;  // of the service, once it has told something
  std::function<void(const std::string&)> show_;
  std::optional<bool> wanted_, installed_;
  bool isStarting_ = false;
};

}  // namespace vorlix

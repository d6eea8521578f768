// The program's registration with the CAPI 2.0 driver: finds the controllers, asks them for incoming calls, and hands
// over the messages that come. Nothing of the driver is touched before CAPIInit.
//
// A registration that is lost, or that the driver refused, is tried again in the background, after 30 seconds at first
// and ten minutes at last; the user hears of the loss once and sees the state of the line.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/call_events.h"
#include "data/SpecSwitches.h"
#include "lines/capi_messages.h"
#include "lines/line_options.h"
#include "platform/CapiDriver.h"
#include "platform/MessageLoop.h"

namespace vorlix {

class CAPI_session {
 public:
  static constexpr std::chrono::milliseconds kFirstRetry = std::chrono::seconds(30);
  static constexpr std::chrono::milliseconds kLastRetry = std::chrono::minutes(10);
  // How long the driver has for its answer in the background.
  static constexpr std::chrono::milliseconds kAnswerTime = std::chrono::seconds(4);

  enum class ListenState { kOff, kAsked, kListening, kRefused };
  struct Controller {
    bool active = false;     // the user wants its calls
    bool supported = false;  // so its profile says
    ListenState listen = ListenState::kOff;
  };

  enum class Reading { kNothing, kMessage, kLost };

  struct Ports {
    CapiDriver& driver;
    CallEvents& events;
    const LineSwitches& switches;
    MessageLoop& loop;
    std::function<CapiSwitches()> readSwitches;  // anew from their file
    std::function<void()> stateChanged;          // IsUp() has changed without an event that tells
  };

  // All ports must outlive the object.
  CAPI_session(Ports ports, const CapiSwitches& switches);

  // Registers and listens; what fails goes out as an event, and the program runs on without the line. byUser: a reset
  // that the user asked for.
  void CAPIInit(bool byUser);
  // Asks each active controller for its calls. What a driver says to it later arrives through GetMessage.
  void CAPIListen();
  // A controller for each character of the setting, "1" active; a shorter text is filled up with "0" from the left.
  void SetControllerActiveStatus();
  void CAPIReset(bool afterCall, bool byUser);
  // At the end of the program; when the system ends, only if the user wants it so.
  void CAPIRelease(bool bySystem);

  // The number of the next request: 0x8001 to 0x7FFF and round, as a signed 16-bit number.
  std::uint16_t IncMsgNum();

  // The next message, without waiting. kLost is said once for each loss.
  Reading GetMessage(std::string& message);
  // Sends where there is a registration; what becomes of it is not asked.
  void PutMessage(const std::string& message);

  bool IsUp() const { return registered_; }
  // A registration is being tried in the background.
  bool IsWaiting() const { return retry_->Enabled(); }
  std::uint16_t ApplicationId() const { return static_cast<std::uint16_t>(applId_); }
  int CountBChannels() const { return channels_; }
  const std::vector<Controller>& Controllers() const { return controllers_; }
  // "maker/2.0-1.5"; empty before the driver was asked.
  std::string DriverText() const;

 private:
  void Initialise(bool byUser, bool silent);
  bool CheckLibrary();
  bool CheckInstallation(bool silent);
  void AskVersion();
  bool Register(bool silent);
  void ReadProfiles();
  int ReadControllerCount();
  void ReadProfile(std::uint32_t number);
  void Release();
  void Listen(std::uint32_t number);
  void ReadConfirmation();
  void Confirmed(std::string_view body);
  Controller* AskedController(const std::optional<ListenConfirmation>& confirmation);
  void Failed(int event, bool silent);
  void Lost();
  void WaitForDriver(std::chrono::milliseconds delay);
  void RetryTick();

  std::uint32_t InfoMask() const;
  std::uint32_t CIPMask() const;

  Ports ports_;
  CapiSwitches switches_;
  std::unique_ptr<Timer> retry_;
  std::chrono::milliseconds retryDelay_{};
  std::optional<std::chrono::milliseconds> returned_;  // steady time of the last registration in the background
  bool asking_ = false;                                // the driver is being asked in the background
  bool initialising_ = false;

  bool libraryChecked_ = false;
  bool installationChecked_ = false;
  bool registered_ = false;
  bool registeredBefore_ = false;
  std::uint32_t applId_ = 0;
  std::uint16_t messageNumber_ = 0;
  std::vector<Controller> controllers_;
  int channels_ = 0;
  std::string manufacturer_, version_;
  std::deque<std::string> early_;  // messages that came while a confirmation was looked for
};

}  // namespace vorlix

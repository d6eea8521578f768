#include "lines/CAPI_session.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

using std::chrono::milliseconds;

constexpr std::uint16_t kFirstNumber = 0x8001;
constexpr std::uint16_t kLastNumber = 0x7FFF;
constexpr CapiLimits kLimits{3072, 2, 7, 2048};
// A controller's number has seven bits.
constexpr int kMostControllers = 127;
// Cause, date and time, display, user-user, call progress, facility, charging.
constexpr std::uint32_t kInfoMask = 0x7F;
// Every voice or fax call, no data call.
constexpr std::uint32_t kCIPMask = 0x1C070072;

void Trace(std::string_view text) {
  ErrorHandling().LogDebug_CAPI(text);
}

std::string Hex(std::uint32_t value) {
  char digits[8];
  const auto end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
  return "0x" + Upper(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

template <std::size_t count>
void TraceWords(const std::string& name, const std::array<std::uint32_t, count>& words) {
  for (std::size_t i = 0; i < count; ++i)
    Trace(name + std::to_string(i + 1) + "= " + std::to_string(words[i]));
}

void TraceProfile(std::uint32_t number, std::uint32_t result, const ControllerProfile& profile) {
  if (!ErrorHandling().Switches.LogCAPI) return;
  Trace("**** Get Profile **********************");
  Trace("CAPI Profile for Controller " + std::to_string(number) + " Result=" + Hex(result));
  Trace("ContrlCount= " + std::to_string(profile.controllers));
  Trace("B-Channels = " + std::to_string(profile.channels));
  Trace("GlobOptions= " + Hex(profile.options));
  Trace("B1ProtoSupp= " + Hex(profile.protocols[0]));
  Trace("B2ProtoSupp= " + Hex(profile.protocols[1]));
  Trace("B3ProtoSupp= " + Hex(profile.protocols[2]));
  TraceWords("Register_I", profile.reserved);
  TraceWords("Register_M", profile.manufacturer);
}

ControllerProfile Profile(CapiDriver& driver, std::uint32_t number, std::uint32_t& result) {
  CapiProfile bytes{};
  result = driver.CAPI_GET_PROFILE(bytes, number);
  return ControllerProfile({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

}  // namespace

CAPI_session::CAPI_session(Ports ports, const CapiSwitches& switches)
    : ports_(std::move(ports)),
      switches_(switches),
      retry_(ports_.loop.MakeTimer(kFirstRetry, [this] { RetryTick(); })) {}

void CAPI_session::CAPIInit(bool byUser) {
  Trapped(
      "modCallFunctions_CAPI.CAPIInit", [&] { Initialise(byUser, false); }, byUser);
}

// Some of the events show a box or ask a question, and the loop runs meanwhile.
void CAPI_session::Initialise(bool byUser, bool silent) {
  if (initialising_) return;
  const struct Mark {
    explicit Mark(bool& flag) : flag_(flag) { flag_ = true; }
    ~Mark() { flag_ = false; }
    bool& flag_;
  } mark(initialising_);
  retry_->SetEnabled(false);
  messageNumber_ = kFirstNumber;
  if (!CheckLibrary() || !CheckInstallation(silent)) return;
  Release();
  AskVersion();
  if (!Register(silent)) return;
  // The first registration of a run asks for the own area code, however long the driver was looked for.
  const bool isFirst = !std::exchange(registeredBefore_, true);
  if (byUser || (silent && !isFirst)) {
    ports_.stateChanged();
  } else {
    ports_.events.Tell(kSourceCAPI, kEventCAPIRegistered);
  }
  if (!registered_) return;  // lost or released meanwhile
  ReadProfiles();
  CAPIListen();
  ports_.events.Tell(kSourceCAPI, kEventCAPIInitEnd);
}

bool CAPI_session::CheckLibrary() {
  if (libraryChecked_) return true;
  libraryChecked_ = ports_.driver.IsDLLAvailable();
  if (libraryChecked_) {
    Trace("CAPI DLL OK");
    return true;
  }
  Trace("CAPI DLL fail");
  registered_ = false;
  ports_.events.Tell(kSourceCAPI, kEventCAPIFileMissing);  // nothing to wait for: it does not appear by itself
  return false;
}

bool CAPI_session::CheckInstallation(bool silent) {
  if (std::exchange(installationChecked_, true)) return true;
  if (ports_.driver.CAPI_INSTALLED() == kCapiOk) {
    Trace("CAPI Installed OK");
    return true;
  }
  Trace("CAPI Installed ERROR");
  Failed(kEventCAPINotInstalled, silent);
  return false;
}

void CAPI_session::AskVersion() {
  if (switches_.SkipVersionAndManufact) {
    Trace("OFF, see Vorlixspec.ini");
    return;
  }
  CapiVersion numbers{};
  ports_.driver.CAPI_GET_VERSION(numbers);
  version_ = std::to_string(numbers[0]) + "." + std::to_string(numbers[1]) + "-" + std::to_string(numbers[2]) + "." +
             std::to_string(numbers[3]);
  std::string text;
  ports_.driver.CAPI_GET_MANUFACTURER(text);
  text = WithoutControls(text);
  manufacturer_ = text.substr(0, text.find(' '));
  Trace("CAPI Register OK (" + manufacturer_ + " V=" + version_ + ")");
}

bool CAPI_session::Register(bool silent) {
  const std::uint32_t result = ports_.driver.CAPI_REGISTER(kLimits, applId_);
  registered_ = result == kCapiOk;
  if (registered_) {
    Trace("CAPI Register OK AppID=" + std::to_string(applId_));
    return true;
  }
  Trace("CAPI Register ERROR");
  Failed(result == kCapiNotInstalled ? kEventCAPIIncompatible : kEventCAPITooManyApps, silent);
  return false;
}

void CAPI_session::ReadProfiles() {
  controllers_.assign(static_cast<std::size_t>(ReadControllerCount()), {});
  channels_ = 0;
  for (std::uint32_t number = 1; number <= controllers_.size(); ++number)
    ReadProfile(number);
}

int CAPI_session::ReadControllerCount() {
  std::uint32_t result = 0;
  const ControllerProfile all = Profile(ports_.driver, 0, result);
  Trace("CAPI GetProfile Controllers=" + std::to_string(all.controllers));
  return std::min<int>(all.controllers, kMostControllers);
}

void CAPI_session::ReadProfile(std::uint32_t number) {
  std::uint32_t result = 0;
  const ControllerProfile profile = Profile(ports_.driver, number, result);
  TraceProfile(number, result, profile);
  controllers_[number - 1].supported = (profile.options & 1) != 0;
  channels_ += profile.channels;
}

void CAPI_session::CAPIListen() {
  Trapped("modCallFunctions_CAPI.CAPIListen", [&] {
    Trace("CAPI Start Listen");
    SetControllerActiveStatus();
    for (std::uint32_t number = 1; number <= controllers_.size(); ++number) {
      if (controllers_[number - 1].active) {
        Listen(number);
      } else {
        Trace("CAPI Listen Off");
      }
    }
  });
}

void CAPI_session::SetControllerActiveStatus() {
  std::string wanted = ports_.switches.Read().ControllerActive;
  if (wanted.size() < controllers_.size()) wanted.insert(0, controllers_.size() - wanted.size(), '0');
  for (std::size_t i = 0; i < controllers_.size(); ++i)
    controllers_[i].active = wanted[i] == '1';
}

void CAPI_session::Listen(std::uint32_t number) {
  const std::string request = ListenRequest(ApplicationId(), IncMsgNum(), number, InfoMask(), CIPMask());
  controllers_[number - 1].listen = ListenState::kAsked;
  if (const std::uint32_t result = ports_.driver.CAPI_PUT_MESSAGE(applId_, request); result != kCapiOk) {
    controllers_[number - 1].listen = ListenState::kRefused;
    Trace("CAPI Listen ERROR Code=" + Hex(result));
    ports_.events.Tell(kSourceCAPI, kEventCAPIListenFailed);
    return;
  }
  ReadConfirmation();
}

// A driver in this machine has answered already; one in the network will.
void CAPI_session::ReadConfirmation() {
  std::string bytes;
  if (ports_.driver.CAPI_GET_MESSAGE(applId_, bytes) != kCapiOk) return;
  const auto message = ReadCapiMessage(bytes);
  if (message && message->header.command == kCapiListen && message->header.subcommand == kCapiConf) {
    Confirmed(message->body);
  } else {
    early_.push_back(std::move(bytes));
  }
}

void CAPI_session::Confirmed(std::string_view body) {
  const auto confirmation = ReadListenConfirmation(body);
  Controller* controller = AskedController(confirmation);
  if (controller == nullptr) return;
  if (confirmation && confirmation->info == 0) {
    controller->listen = ListenState::kListening;
    Trace("CAPI Listen OK");
    return;
  }
  controller->listen = ListenState::kRefused;
  Trace("CAPI Listen Error InfoMask=" + Hex(InfoMask()) + " CIPMask=" + Hex(CIPMask()));
  ports_.events.Tell(kSourceCAPI, kEventCAPIListenFailed);
}

CAPI_session::Controller* CAPI_session::AskedController(const std::optional<ListenConfirmation>& confirmation) {
  const auto isAsked = [](const Controller& controller) { return controller.listen == ListenState::kAsked; };
  if (!confirmation) {
    const auto first = std::find_if(controllers_.begin(), controllers_.end(), isAsked);
    return first == controllers_.end() ? nullptr : &*first;
  }
  const std::size_t number = confirmation->controller & kMostControllers;
  const bool known = number >= 1 && number <= controllers_.size() && isAsked(controllers_[number - 1]);
  return known ? &controllers_[number - 1] : nullptr;
}

void CAPI_session::CAPIReset(bool afterCall, bool byUser) {
  Trapped(
      "modCallFunctions_CAPI.CAPIReset",
      [&] {
        if (initialising_) return;
        Release();
        if (switches_.LoadThisValues && afterCall) switches_ = ports_.readSwitches();
        Initialise(byUser, false);
      },
      afterCall, byUser);
}

void CAPI_session::CAPIRelease(bool bySystem) {
  Trapped(
      "modCallFunctions_CAPI.CAPIRelease",
      [&] {
        retry_->SetEnabled(false);
        if (!bySystem || ports_.switches.Read().CapiReleaseByShutdown) Release();
      },
      bySystem);
}

void CAPI_session::Release() {
  if (!std::exchange(registered_, false)) return;
  ports_.driver.CAPI_RELEASE(std::exchange(applId_, 0));
  early_.clear();
  Trace("CAPI Release");
}

std::uint16_t CAPI_session::IncMsgNum() {
  const std::uint16_t number = messageNumber_;
  messageNumber_ = number == kLastNumber ? kFirstNumber : static_cast<std::uint16_t>(number + 1);
  return number;
}

CAPI_session::Reading CAPI_session::GetMessage(std::string& message) {
  message.clear();
  if (!registered_) return Reading::kNothing;
  if (!early_.empty()) {
    message = std::move(early_.front());
    early_.pop_front();
    return Reading::kMessage;
  }
  const std::uint32_t result = ports_.driver.CAPI_GET_MESSAGE(applId_, message);
  if (result == kCapiIllegalApplication) {
    Lost();
    return Reading::kLost;
  }
  if (result != kCapiOk) return Reading::kNothing;
  const auto parts = ReadCapiMessage(message);
  if (!parts || parts->header.command != kCapiListen || parts->header.subcommand != kCapiConf) return Reading::kMessage;
  Confirmed(parts->body);
  return Reading::kNothing;
}

void CAPI_session::PutMessage(const std::string& message) {
  if (registered_) ports_.driver.CAPI_PUT_MESSAGE(applId_, message);
}

std::string CAPI_session::DriverText() const {
  return version_.empty() ? std::string() : manufacturer_ + "/" + version_;
}

std::uint32_t CAPI_session::InfoMask() const {
  return switches_.LoadThisValues ? switches_.InfoMask : kInfoMask;
}

std::uint32_t CAPI_session::CIPMask() const {
  return switches_.LoadThisValues ? switches_.CIPMask : kCIPMask;
}

void CAPI_session::Failed(int event, bool silent) {
  WaitForDriver(silent ? std::min(2 * retryDelay_, kLastRetry) : kFirstRetry);
  if (!silent) ports_.events.Tell(kSourceCAPI, event);
}

// A line that comes and goes is told of once.
void CAPI_session::Lost() {
  Trace("CAPI Connection lost");
  Release();
  const bool again = returned_ && ports_.loop.GetClock().Steady() - *returned_ < kLastRetry;
  WaitForDriver(again ? std::min(2 * retryDelay_, kLastRetry) : kFirstRetry);
  ports_.stateChanged();
  if (!again) ports_.events.Tell(kSourceCAPI, kEventCAPIListenFailed);
}

void CAPI_session::WaitForDriver(milliseconds delay) {
  retryDelay_ = delay;
  asking_ = false;
  retry_->SetInterval(delay);
  retry_->SetEnabled(true);
}

// Reaching the driver may take long, so it is asked in the background first and registered with once it has answered.
void CAPI_session::RetryTick() {
  Trapped("CAPI_session.RetryTick", [&] {
    if (!asking_) {
      asking_ = true;
      ports_.driver.StartAsking();
      retry_->SetInterval(kAnswerTime);
      return;
    }
    asking_ = false;
    if (!ports_.driver.HasAnswered()) return WaitForDriver(std::min(2 * retryDelay_, kLastRetry));
    Initialise(false, true);
    if (registered_) returned_ = ports_.loop.GetClock().Steady();
  });
}

}  // namespace vorlix

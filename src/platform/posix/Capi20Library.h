// The CAPI 2.0 driver of a Linux machine, "libcapi20.so.3", loaded when it is first asked for. The library may reach a
// driver over the network; it connects, reads and writes without a limit of time, so all of it runs in a thread of its
// own. As long as a call has not come back the driver counts as not there.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/CapiDriver.h"
#include "platform/posix/CallThread.h"

namespace vorlix {

class Capi20Library : public CapiDriver {
 public:
  static constexpr const char* kFile = "libcapi20.so.3";

  explicit Capi20Library(std::string file = kFile) : file_(std::move(file)) {}

  bool IsDLLAvailable() override;
  std::uint32_t CAPI_INSTALLED() override;
  std::uint32_t CAPI_REGISTER(const CapiLimits& limits, std::uint32_t& applId) override;
  std::uint32_t CAPI_RELEASE(std::uint32_t applId) override;
  std::uint32_t CAPI_GET_VERSION(CapiVersion& version) override;
  std::uint32_t CAPI_GET_MANUFACTURER(std::string& text) override;
  std::uint32_t CAPI_GET_PROFILE(CapiProfile& profile, std::uint32_t controller) override;
  std::uint32_t CAPI_GET_MESSAGE(std::uint32_t applId, std::string& message) override;
  std::uint32_t CAPI_PUT_MESSAGE(std::uint32_t applId, std::string_view message) override;
  void StartAsking() override;
  bool HasAnswered() override;

  struct Functions;  // of the library

 private:
  struct Registered {
    std::uint32_t code = kCapiNotInstalled;
    std::uint32_t applId = 0;
    int descriptor = -1;
  };
  struct Received {
    std::uint32_t code = kCapiQueueEmpty;
    bool readable = false;
    std::string bytes;
  };
  // A message that the thread is about to read.
  struct Fetching {
    std::shared_ptr<Received> received;
    std::chrono::steady_clock::time_point since;
  };

  template <class Result>
  bool Ask(const std::shared_ptr<Result>& result, std::function<Result(const Functions&)> call);
  static Registered Register(const Functions& library, const CapiLimits& limits);
  static Received Fetch(const Functions& library, std::uint32_t applId);
  std::uint32_t StillFetching();
  std::uint32_t Judge(const Received& received);

  std::string file_;
  std::shared_ptr<const Functions> functions_;  // none: not loaded
  std::unique_ptr<CallThread> thread_;
  int descriptor_ = -1;  // of the registration; the library's
  bool releasing_ = false;
  std::optional<Fetching> fetching_;
  int emptyReads_ = 0;
  std::shared_ptr<std::uint32_t> answer_;  // to StartAsking
};

}  // namespace vorlix

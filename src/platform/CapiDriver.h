// The CAPI 2.0 driver by its eight documented functions, which are the reason for the number of methods. Each answers
// with the driver's own code, 0 for success. Numbers in messages and profiles are little endian. No call waits for the
// driver longer than a few seconds; a driver that does not answer in that time counts as not there.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorlix {

// The codes that make a difference.
inline constexpr std::uint32_t kCapiOk = 0;
inline constexpr std::uint32_t kCapiNotInstalled = 0x1009;
// The registration is gone, and with it everything that was asked for.
inline constexpr std::uint32_t kCapiIllegalApplication = 0x1101;
inline constexpr std::uint32_t kCapiQueueEmpty = 0x1104;

// Driver major, driver minor, manufacturer's major, manufacturer's minor.
using CapiVersion = std::array<std::uint32_t, 4>;
using CapiProfile = std::array<unsigned char, 64>;

// What an application asks room for.
struct CapiLimits {
  std::uint32_t MessageBufferSize = 0;
  std::uint32_t maxLogicalConnection = 0;
  std::uint32_t maxBDataBlocks = 0;
  std::uint32_t maxBDataLen = 0;
};

class CapiDriver {
 public:
  // No message of the driver is longer.
  static constexpr std::size_t kLongestMessage = 2048;

  virtual ~CapiDriver() = default;

  // Whether the driver's library can be loaded; loads it. Before, and without it, every function answers "not
  // installed".
  virtual bool IsDLLAvailable() = 0;

  virtual std::uint32_t CAPI_INSTALLED() = 0;
  // applId is 0 after a failure.
  virtual std::uint32_t CAPI_REGISTER(const CapiLimits& limits, std::uint32_t& applId) = 0;
  virtual std::uint32_t CAPI_RELEASE(std::uint32_t applId) = 0;
  virtual std::uint32_t CAPI_GET_VERSION(CapiVersion& version) = 0;
  virtual std::uint32_t CAPI_GET_MANUFACTURER(std::string& text) = 0;
  // Controller 0 tells how many there are. Nothing but zeros after a failure.
  virtual std::uint32_t CAPI_GET_PROFILE(CapiProfile& profile, std::uint32_t controller) = 0;
  // Never waits. At most as many bytes as the message says it has, at most kLongestMessage, perhaps fewer.
  virtual std::uint32_t CAPI_GET_MESSAGE(std::uint32_t applId, std::string& message) = 0;
  virtual std::uint32_t CAPI_PUT_MESSAGE(std::uint32_t applId, std::string_view message) = 0;

  // Asks again, in the background, whether a driver is there; HasAnswered() tells some seconds later.
  virtual void StartAsking() = 0;
  virtual bool HasAnswered() = 0;
};

// A machine without the library.
class NoCapiDriver : public CapiDriver {
 public:
  bool IsDLLAvailable() override { return false; }
  std::uint32_t CAPI_INSTALLED() override { return kCapiNotInstalled; }
  std::uint32_t CAPI_REGISTER(const CapiLimits&, std::uint32_t& applId) override {
    applId = 0;
    return kCapiNotInstalled;
  }
  std::uint32_t CAPI_RELEASE(std::uint32_t) override { return kCapiNotInstalled; }
  std::uint32_t CAPI_GET_VERSION(CapiVersion& version) override {
    version = {};
    return kCapiNotInstalled;
  }
  std::uint32_t CAPI_GET_MANUFACTURER(std::string& text) override {
    text.clear();
    return kCapiNotInstalled;
  }
  std::uint32_t CAPI_GET_PROFILE(CapiProfile& profile, std::uint32_t) override {
    profile = {};
    return kCapiNotInstalled;
  }
  std::uint32_t CAPI_GET_MESSAGE(std::uint32_t, std::string& message) override {
    message.clear();
    return kCapiNotInstalled;
  }
  std::uint32_t CAPI_PUT_MESSAGE(std::uint32_t, std::string_view) override { return kCapiNotInstalled; }
  void StartAsking() override {}
  bool HasAnswered() override { return false; }
};

}  // namespace vorlix

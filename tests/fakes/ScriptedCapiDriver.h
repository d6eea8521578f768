// A driver that answers as it is told: controllers, codes and a script of messages, in hex as in a log. What is sent to
// it stands in `sent`, in the same form.
#pragma once

#include <cstdio>
#include <deque>
#include <string>
#include <vector>

#include "platform/CapiDriver.h"

namespace vorlix::fakes {

inline std::string FromHex(std::string_view hex) {
  std::string bytes;
  int high = -1;
  for (const char digit : hex) {
    if (digit == ' ') continue;
    const int value = digit <= '9' ? digit - '0' : digit - 'a' + 10;
    if (high >= 0) bytes += static_cast<char>(high * 16 + value);
    high = high >= 0 ? -1 : value;
  }
  return bytes;
}

inline std::string ToHex(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%s%02x", hex.empty() ? "" : " ", static_cast<unsigned char>(byte));
    hex += digits;
  }
  return hex;
}

class ScriptedCapiDriver : public CapiDriver {
 public:
  bool isThere = true;  // the library
  bool isReachable = true;
  std::uint32_t installed = kCapiOk, registering = kCapiOk, putting = kCapiOk;
  std::uint32_t whenEmpty = kCapiQueueEmpty;
  std::uint32_t controllers = 1;
  bool confirmsListen = true;
  std::deque<std::string> script;  // bytes
  std::vector<std::string> sent;
  std::string calls;  // the functions beside messages, by their short names

  void Say(std::string_view hex) { script.push_back(FromHex(hex)); }
  std::vector<std::string> Sent() { return std::exchange(sent, {}); }

  bool IsDLLAvailable() override {
    calls += "dll ";
    return isThere;
  }
  std::uint32_t CAPI_INSTALLED() override {
    calls += "installed ";
    return installed;
  }
  std::uint32_t CAPI_REGISTER(const CapiLimits& limits, std::uint32_t& applId) override {
    calls += "register(" + std::to_string(limits.MessageBufferSize) + "," +
             std::to_string(limits.maxLogicalConnection) + "," + std::to_string(limits.maxBDataBlocks) + "," +
             std::to_string(limits.maxBDataLen) + ") ";
    applId = registering == kCapiOk ? 7 : 0;
    return registering;
  }
  std::uint32_t CAPI_RELEASE(std::uint32_t applId) override {
    calls += "release(" + std::to_string(applId) + ") ";
    return kCapiOk;
  }
  std::uint32_t CAPI_GET_VERSION(CapiVersion& version) override {
    calls += "version ";
    version = {2, 0, 1, 5};
    return kCapiOk;
  }
  std::uint32_t CAPI_GET_MANUFACTURER(std::string& text) override {
    text = "Maker Inc.";
    return kCapiOk;
  }
  std::uint32_t CAPI_GET_PROFILE(CapiProfile& profile, std::uint32_t controller) override {
    profile = {};
    profile[0] = static_cast<unsigned char>(controllers & 0xFF);
    profile[1] = static_cast<unsigned char>(controllers >> 8);
    profile[2] = 2;     // B channels
    profile[4] = 0x1F;  // options
    profile[20] = 7;    // the first reserved word
    if (controller > 0) calls += "profile(" + std::to_string(controller) + ") ";
    return kCapiOk;
  }
  std::uint32_t CAPI_GET_MESSAGE(std::uint32_t, std::string& message) override {
    message.clear();
    if (script.empty()) return whenEmpty;
    message = script.front();
    script.pop_front();
    return kCapiOk;
  }
  std::uint32_t CAPI_PUT_MESSAGE(std::uint32_t, std::string_view message) override {
    sent.push_back(ToHex(message));
    if (putting == kCapiOk && confirmsListen && message.size() == 26) Confirm(message);
    return putting;
  }
  void StartAsking() override { calls += "ask "; }
  bool HasAnswered() override { return isReachable; }

 private:
  void Confirm(std::string_view request) {
    std::string confirmation = FromHex("0e 00 07 00 05 81 00 00 00 00 00 00 00 00");
    confirmation.replace(6, 6, request.substr(6, 6));  // number and controller
    script.push_back(confirmation);
  }
};

}  // namespace vorlix::fakes

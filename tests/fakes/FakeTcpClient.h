// A TcpClient with memory: the test plays the network and the other side. The listener is handed over at construction,
// as with the real one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/TcpClient.h"

namespace vorlix {

class FakeTcpClient : public TcpClient {
 public:
  enum class State { kIdle, kConnecting, kConnected };
  struct Target {
    std::string host;
    std::uint16_t port = 0;
    friend bool operator==(const Target&, const Target&) = default;
  };

  explicit FakeTcpClient(Listener& givenListener) : listener(givenListener) {}

  Listener& listener;
  State state = State::kIdle;
  std::vector<Target> connects;

  // The network's side. Each does nothing in a state in which the real client could not report it.
  void AcceptConnection() {
    if (state != State::kConnecting) return;
    state = State::kConnected;
    listener.OnConnected();
  }
  void Receive(std::string_view bytes) {
    if (state == State::kConnected) listener.OnData(bytes);
  }
  void Drop(const std::string& reason = "connection ended") {
    if (std::exchange(state, State::kIdle) != State::kIdle) listener.OnClosed(reason);
  }

  void Connect(const std::string& host, std::uint16_t port) override {
    connects.push_back({host, port});
    state = State::kConnecting;
  }
  bool Send(std::string_view) override { return state == State::kConnected; }
  void Close() override { state = State::kIdle; }
};

}  // namespace vorlix

// A router's call monitor on the loopback address, for the tests: accepts one client at a time and sends it lines.
#pragma once

#include <poll.h>
#include <string>
#include <string_view>

#include "fakes/Loopback.h"

namespace vorlix {

class TestRouter {
 public:
  int Port() const { return port_; }

  // True once a client is there.
  bool WaitForClient() {
    pollfd wanted{listener_.Get(), POLLIN, 0};
    if (poll(&wanted, 1, 20'000) != 1) return false;
    client_ = Descriptor(accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
    return static_cast<bool>(client_);
  }
  // False when the client is gone.
  bool Send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t sent = send(client_.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }
  bool SendLine(std::string_view line) { return Send(std::string(line) + "\r\n"); }
  void GoAway() {
    listener_.Close();
    client_.Close();
  }
  // The same port as before.
  void ComeBack() { listener_ = ListenOnLoopback(port_); }

 private:
  int port_ = 0;
  Descriptor listener_ = ListenOnLoopback(port_);
  Descriptor client_;
};

}  // namespace vorlix

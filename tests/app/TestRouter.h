// A router's call monitor on the loopback address, for the tests: accepts one client at a time and sends it lines.
#pragma once

#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace vorlix {

class TestRouter {
 public:
  TestRouter() { Listen(0); }
  ~TestRouter() {
    HangUp();
    StopListening();
  }
  TestRouter(const TestRouter&) = delete;
  TestRouter& operator=(const TestRouter&) = delete;

  int Port() const { return port_; }

  // True once a client is there.
  bool WaitForClient(std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    pollfd wanted{listener_, POLLIN, 0};
    if (poll(&wanted, 1, static_cast<int>(limit.count())) != 1) return false;
    HangUp();
    client_ = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    return client_ >= 0;
  }
  // False when the client is gone.
  bool Send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t sent = send(client_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }
  bool SendLine(std::string_view line) { return Send(std::string(line) + "\r\n"); }
  void HangUp() {
    if (client_ >= 0) close(client_);
    client_ = -1;
  }
  void StopListening() {
    if (listener_ >= 0) close(listener_);
    listener_ = -1;
  }
  // The same port as before.
  void ListenAgain() { Listen(port_); }

 private:
  void Listen(int port) {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    socklen_t length = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, length) != 0 || listen(listener_, 4) != 0 ||
        getsockname(listener_, generic, &length) != 0) {
      throw std::runtime_error("the test's router cannot listen");
    }
    port_ = ntohs(address.sin_port);
  }

  int listener_ = -1;
  int client_ = -1;
  int port_ = 0;
};

}  // namespace vorlix

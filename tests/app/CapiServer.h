// A CAPI driver in the network, on the loopback address, as the library's remote module knows it: each application has
// a connection of its own, and one more asks for profiles. A frame is 0x80, the length in 16 bits and the message. It
// runs in a thread, for whoever calls the library waits for it.
#pragma once

#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/file.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "fakes/ScriptedCapiDriver.h"

namespace vorlix {

// The library keeps its applications in memory that all processes share, by numbers that the driver gives out: so there
// is one such driver at a time, whatever tests run beside each other.
class OnlyOneOnTheMachine {
 public:
  OnlyOneOnTheMachine()
      : lock_(
            open(("/tmp/vorlix-capi-tests." + std::to_string(getuid())).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (flock(lock_, LOCK_EX) != 0) throw std::runtime_error("the test's driver cannot be locked");
  }
  ~OnlyOneOnTheMachine() { close(lock_); }
  OnlyOneOnTheMachine(const OnlyOneOnTheMachine&) = delete;
  OnlyOneOnTheMachine& operator=(const OnlyOneOnTheMachine&) = delete;

 private:
  int lock_;
};

class CapiServer {
 public:
  explicit CapiServer(int port = 0) : port_(port) { Start(); }
  ~CapiServer() { Stop(); }
  CapiServer(const CapiServer&) = delete;
  CapiServer& operator=(const CapiServer&) = delete;

  int Port() const { return port_; }
  // Makes the library that is loaded with this home folder find the server.
  void WriteConfiguration(const std::string& home) const {
    std::ofstream(home + "/.capi20rc") << "REMOTE fritzbox 127.0.0.1 " << port_ << "\n";
  }

  std::atomic<bool> answers = true;  // or hears all and says nothing

  // Listens again on the same port after Stop().
  void Start() {
    Listen();
    ends_ = false;
    thread_ = std::thread([this] { Serve(); });
  }
  // All connections end.
  void Stop() {
    ends_ = true;
    if (thread_.joinable()) thread_.join();
    const std::lock_guard lock(mutex_);
    for (const auto& [descriptor, bytes] : clients_)
      close(descriptor);
    clients_.clear();
    application_ = -1;
    if (listener_ >= 0) close(listener_);
    listener_ = -1;
  }

  // A message in hex, or bytes as they are, to the application registered last.
  void Say(std::string_view hex) { SayBytes(Frame(fakes::FromHex(hex))); }
  void SayBytes(const std::string& bytes) {
    const std::lock_guard lock(mutex_);
    Send(application_, bytes);
  }

  // The next message of the application in hex, functions of the driver not counted; empty when none comes.
  std::string Next(std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, limit, [this] { return !heard_.empty(); })) return {};
    const std::string message = heard_.front();
    heard_.erase(heard_.begin());
    return message;
  }
  bool IsRegistered() {
    const std::lock_guard lock(mutex_);
    return application_ >= 0;
  }

 private:
  static std::string Frame(const std::string& message) { return '\x80' + Word(message.size()) + message; }
  static std::string Word(std::size_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
  }
  static void Send(int descriptor, const std::string& bytes) {
    static_cast<void>(!send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL));
  }

  void Listen() {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port_));
    socklen_t length = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, length) != 0 || listen(listener_, 8) != 0 ||
        getsockname(listener_, generic, &length) != 0) {
      throw std::runtime_error("the test's driver cannot listen");
    }
    port_ = ntohs(address.sin_port);
  }

  void Serve() {
    while (!ends_) {
      std::vector<pollfd> wanted{{listener_, POLLIN, 0}};
      for (const auto& [descriptor, bytes] : clients_)
        wanted.push_back({descriptor, POLLIN, 0});
      poll(wanted.data(), wanted.size(), 5);
      const std::lock_guard lock(mutex_);
      if (wanted[0].revents != 0) clients_[accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)];
      for (std::size_t i = 1; i < wanted.size(); ++i) {
        if (wanted[i].revents != 0) Receive(wanted[i].fd);
      }
    }
  }

  void Receive(int descriptor) {
    char bytes[4096];
    const ssize_t got = recv(descriptor, bytes, sizeof bytes, 0);
    if (got <= 0) {
      close(descriptor);
      clients_.erase(descriptor);
      if (application_ == descriptor) application_ = -1;
      return;
    }
    std::string& rest = clients_[descriptor];
    rest.append(bytes, static_cast<std::size_t>(got));
    while (rest.size() >= 3) {
      const std::size_t length = static_cast<unsigned char>(rest[1]) | static_cast<unsigned char>(rest[2]) << 8;
      if (rest.size() < 3 + length) return;
      Hear(descriptor, rest.substr(3, length));
      rest.erase(0, 3 + length);
    }
  }

  void Hear(int descriptor, const std::string& message) {
    constexpr char kFunction = 0x20;
    if (message[4] == kFunction) {
      if (answers) Answer(descriptor, message);
      return;
    }
    heard_.push_back(fakes::ToHex(message));
    changed_.notify_all();
    // A LISTEN_REQ is confirmed with its own number and controller.
    if (message[4] == 5 && answers) {
      Send(descriptor, Frame(fakes::FromHex("0e 00 07 00 05 81") + message.substr(6, 6) + fakes::FromHex("00 00")));
    }
  }

  // A function: a structure of the function's number and more; the answer holds the result code in one of its own.
  void Answer(int descriptor, const std::string& message) {
    enum { kRegister = 0, kRelease = 1, kProfile = 2 };
    const int function = message[11];
    std::string result = Word(0);
    if (function == kRegister) application_ = descriptor;
    if (function == kRelease) return;
    if (function == kProfile) result += fakes::FromHex("01 00 02 00 1f 00 00 00") + std::string(56, '\0');
    const std::string inner = Word(static_cast<std::size_t>(function)) + static_cast<char>(result.size()) + result;
    const std::string body = Word(0) + fakes::FromHex("02 00") + static_cast<char>(inner.size()) + inner;
    const std::string answer = Word(8 + body.size()) + fakes::FromHex("07 00 20 81") + message.substr(6, 2) + body;
    Send(descriptor, '\x80' + std::string(1, static_cast<char>(answer.size())) + answer);
  }

  OnlyOneOnTheMachine onlyOne_;
  int port_;
  int listener_ = -1;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::map<int, std::string> clients_;  // with the bytes of a frame that is not whole yet
  int application_ = -1;
  std::vector<std::string> heard_;
};

}  // namespace vorlix

// A CAPI driver in the network, on the loopback address, as the library's remote module knows it: each application has
// a connection of its own, and one more asks for profiles. A frame is 0x80, the length in 16 bits and the message. It
// runs in a thread, for whoever calls the library waits for it.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "fakes/ScriptedCapiDriver.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/TcpServer.h"

namespace vorlix {

// The library keeps its applications in memory that all processes share, by numbers that the driver gives out: so there
// is one such driver at a time, whatever tests run beside each other.
class OnlyOneOnTheMachine {
 public:
  OnlyOneOnTheMachine() : lock_(open(File().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (flock(lock_.Get(), LOCK_EX) != 0) throw std::runtime_error("the test's driver cannot be locked");
  }

 private:
  static std::string File() { return "/tmp/vorlix-capi-tests." + std::to_string(getuid()); }

  Descriptor lock_;
};

class CapiServer : private TcpServer::Listener {
 public:
  explicit CapiServer(int port = 0) : port_(static_cast<std::uint16_t>(port)) { Start(); }
  ~CapiServer() override { Stop(); }
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
    if (!server_.Start(port_)) throw std::runtime_error("the test's driver cannot listen");
    port_ = server_.Port();
    ends_ = false;
    thread_ = std::thread([this] { Serve(); });
  }
  // All connections end.
  void Stop() {
    ends_ = true;
    if (thread_.joinable()) thread_.join();
    server_.Stop();
    server_.DropAll();
    rests_.clear();
    application_ = 0;
  }

  // A message in hex, or bytes as they are, to the application registered last.
  void Say(std::string_view hex) { SayBytes(Frame(fakes::FromHex(hex))); }
  void SayBytes(const std::string& bytes) {
    const std::lock_guard lock(mutex_);
    server_.Send(application_, bytes);
  }

  // The next message of the application in hex, functions of the driver not counted; empty when none comes.
  std::string Next(std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, limit, [this] { return !heard_.empty(); })) return {};
    const std::string message = heard_.front();
    heard_.erase(heard_.begin());
    return message;
  }

 private:
  static std::string Frame(const std::string& message) { return '\x80' + Word(message.size()) + message; }
  static std::string Word(std::size_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
  }

  void Serve() {
    while (!ends_) {
      {
        const std::lock_guard lock(mutex_);
        loop_.RunPending();
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

  void OnGone(TcpServer::Client client) override {
    rests_.erase(client);
    if (application_ == client) application_ = 0;
  }

  void OnData(TcpServer::Client client, std::string_view bytes) override {
    std::string& rest = rests_[client];
    rest += bytes;
    while (rest.size() >= 3) {
      const std::size_t length = static_cast<unsigned char>(rest[1]) | static_cast<unsigned char>(rest[2]) << 8;
      if (rest.size() < 3 + length) return;
      Hear(client, rest.substr(3, length));
      rest.erase(0, 3 + length);
    }
  }

  void Hear(TcpServer::Client client, const std::string& message) {
    constexpr char kFunction = 0x20;
    if (message[4] == kFunction) {
      if (answers) Answer(client, message);
      return;
    }
    heard_.push_back(fakes::ToHex(message));
    changed_.notify_all();
    // A LISTEN_REQ is confirmed with its own number and controller.
    if (message[4] == 5 && answers) {
      server_.Send(client, Frame(fakes::FromHex("0e 00 07 00 05 81") + message.substr(6, 6) + fakes::FromHex("00 00")));
    }
  }

  // A function: a structure of the function's number and more; the answer holds the result code in one of its own.
  void Answer(TcpServer::Client client, const std::string& message) {
    enum { kRegister = 0, kRelease = 1, kProfile = 2 };
    const int function = message[11];
    std::string result = Word(0);
    if (function == kRegister) application_ = client;
    if (function == kRelease) return;
    if (function == kProfile) result += fakes::FromHex("01 00 02 00 1f 00 00 00") + std::string(56, '\0');
    const std::string inner = Word(static_cast<std::size_t>(function)) + static_cast<char>(result.size()) + result;
    const std::string body = Word(0) + fakes::FromHex("02 00") + static_cast<char>(inner.size()) + inner;
    const std::string answer = Word(8 + body.size()) + fakes::FromHex("07 00 20 81") + message.substr(6, 2) + body;
    server_.Send(client, '\x80' + std::string(1, static_cast<char>(answer.size())) + answer);
  }

  OnlyOneOnTheMachine onlyOne_;
  std::uint16_t port_;
  PollReactor loop_;
  TcpServer server_{loop_, *this};
  std::atomic<bool> ends_ = false;
  std::thread thread_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::map<TcpServer::Client, std::string> rests_;  // the bytes of a frame that is not whole yet
  TcpServer::Client application_ = 0;
  std::vector<std::string> heard_;
};

}  // namespace vorlix

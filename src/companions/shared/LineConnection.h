// A connection to a server of lines that never gives up: whatever ends it, the next attempt follows.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "companions/shared/LineSplitter.h"
#include "companions/shared/RetryDelay.h"
#include "platform/MessageLoop.h"
#include "platform/TcpClient.h"

namespace vorlix {

class LineConnection : public TcpClient::Listener {
 public:
  // Called from the loop; must not destroy the connection.
  class Listener {
   public:
    virtual ~Listener() = default;
    // True when the line was of use: who greets and hangs up is no better than one that refuses.
    virtual bool OnLine(const std::string& line) = 0;
    // Once for each change, and once for a first attempt that fails.
    virtual void OnUp() = 0;
    virtual void OnDown(const std::string& reason) = 0;
  };
  using MakeClient = std::function<std::unique_ptr<TcpClient>(TcpClient::Listener&)>;

  // Loop and listener must outlive the connection.
  LineConnection(MessageLoop& loop, Listener& listener, std::size_t mostText, const MakeClient& makeClient);

  void Start(const std::string& host, std::uint16_t port);

  void OnConnected() override;
  void OnData(std::string_view bytes) override;
  void OnClosed(const std::string& reason) override;

 private:
  enum class State { kUnknown, kUp, kDown };
  void Attempt();

  const Clock& clock_;
  Listener& listener_;
  std::chrono::milliseconds connectedAt_{0};
  LineSplitter splitter_;
  RetryDelay delay_;
  State state_ = State::kUnknown;
  std::string host_;
  std::uint16_t port_ = 0;
  std::unique_ptr<Timer> retry_;
  std::unique_ptr<TcpClient> client_;
};

}  // namespace vorlix

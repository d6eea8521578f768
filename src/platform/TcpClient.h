// A TCP connection that never blocks the loop, host names included. Dead peers are found by keep-alive probes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorlix {

class TcpClient {
 public:
  // Called from the loop. Each routine may call Connect() or Close() and may destroy the client.
  class Listener {
   public:
    virtual ~Listener() = default;
    virtual void OnConnected() = 0;
    virtual void OnData(std::string_view bytes) = 0;  // bytes are good during the call
    // The attempt failed or the connection ended, once for each Connect(). "connect to fritz.box:1012: refused".
    virtual void OnClosed(const std::string& reason) = 0;
  };

  virtual ~TcpClient() = default;
  // Starts an attempt, giving up a former connection without a word. The result comes through the listener, later.
  virtual void Connect(const std::string& host, std::uint16_t port) = 0;
  // False when not connected. What the system does not take at once is kept and sent later.
  virtual bool Send(std::string_view bytes) = 0;
  // Ends attempt or connection; OnClosed is not called.
  virtual void Close() = 0;
};

}  // namespace vorlix

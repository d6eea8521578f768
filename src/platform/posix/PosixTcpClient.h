// The TCP client on the loop. All addresses of a name are tried in their order. A peer that has vanished without a word
// is noticed within a minute.
#pragma once

#include <memory>
#include <vector>

#include "platform/Reactor.h"
#include "platform/TcpClient.h"
#include "platform/posix/NameLookup.h"
#include "platform/posix/SocketStream.h"

namespace vorlix {

class PosixTcpClient : public TcpClient, private SocketStream::Handler {
 public:
  // For finding the addresses, and for connecting to one of them.
  static constexpr std::chrono::seconds kMostLookup{30};
  static constexpr std::chrono::seconds kMostConnect{20};

  // Reactor and listener must outlive the client.
  PosixTcpClient(Reactor& reactor, Listener& listener);
  ~PosixTcpClient() override;

  void Connect(const std::string& host, std::uint16_t port) override;
  bool Send(std::string_view bytes) override;
  void Close() override;

 private:
  void Begin(const std::string& host, std::uint16_t port);
  void OnAddresses(HostAddresses found);
  void TryNext();
  void OnAttemptReady();
  void OnTimeOut();
  void Fail(const std::string& reason);

  void OnBytes(SocketStream& stream, std::string_view bytes) override;
  void OnEnd(SocketStream& stream, int error) override;

  Reactor& reactor_;
  Listener& listener_;
  std::string peer_;              // "fritz.box:1012"
  std::shared_ptr<char> posted_;  // held as long as a posted beginning is wanted
  std::unique_ptr<NameLookup> lookup_;
  std::unique_ptr<Timer> deadline_;
  std::vector<HostAddress> addresses_;
  std::size_t next_ = 0;
  int lastError_ = 0;
  Descriptor socket_;
  std::unique_ptr<Watch> attempt_;
  std::unique_ptr<SocketStream> stream_;
};

}  // namespace vorlix

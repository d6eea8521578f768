// A small TCP server on the loopback address: the other side of a line, for the replay tool and for tests.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "platform/Reactor.h"
#include "platform/posix/Acceptor.h"
#include "platform/posix/SocketStream.h"

namespace vorlix {

class TcpServer : private SocketStream::Handler {
 public:
  using Client = std::uint64_t;

  // Called from the loop; must not destroy the server.
  class Listener {
   public:
    virtual ~Listener() = default;
    virtual void OnClient(Client) {}
    virtual void OnData(Client, std::string_view) {}
    // The client went; not called for those that are dropped.
    virtual void OnGone(Client) {}
  };

  // Reactor and listener must outlive the server.
  TcpServer(Reactor& reactor, Listener& listener)
      : reactor_(reactor),
        listener_(listener),
        acceptor_(reactor, [this](Descriptor made) { Take(std::move(made)); }) {}

  // Listens on 127.0.0.1; port 0 takes a free one, and the same again after Stop(). False when the port is not to be
  // had.
  bool Start(std::uint16_t port = 0);
  std::uint16_t Port() const { return port_; }
  // New clients are refused; those that are there stay.
  void Stop() { acceptor_.Stop(); }

  std::size_t ClientCount() const { return clients_.size(); }
  // False for a client that is not there.
  bool Send(Client client, std::string_view bytes);
  void SendToAll(std::string_view bytes);
  void Drop(Client client) { clients_.erase(client); }
  void DropAll() { clients_.clear(); }

 private:
  void Take(Descriptor connection);
  Client ClientOf(const SocketStream& stream) const;
  void OnBytes(SocketStream& stream, std::string_view bytes) override;
  void OnEnd(SocketStream& stream, int error) override;

  Reactor& reactor_;
  Listener& listener_;
  std::uint16_t port_ = 0;
  Acceptor acceptor_;
  std::map<Client, std::unique_ptr<SocketStream>> clients_;
  Client last_ = 0;
};

}  // namespace vorlix

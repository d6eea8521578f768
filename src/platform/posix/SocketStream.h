// A connected stream socket on the loop: bytes in, bytes out, and its end once.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Reactor.h"
#include "platform/posix/Descriptor.h"

namespace vorlix {

class SocketStream {
 public:
  // Called from the loop; each routine may destroy the stream.
  class Handler {
   public:
    virtual ~Handler() = default;
    virtual void OnBytes(SocketStream& stream, std::string_view bytes) = 0;
    // The other side ended the connection (error 0) or it broke. Nothing comes after.
    virtual void OnEnd(SocketStream& stream, int error) = 0;
  };

  // Takes the socket, which must not block. Reactor and handler must outlive the stream.
  SocketStream(Reactor& reactor, Descriptor socket, Handler& handler);

  // False when the connection is broken. What the system does not take at once is kept and sent later.
  bool Send(std::string_view bytes);

 private:
  void OnReady(Reactor::Ready ready);
  bool Flush();
  void Receive();

  Handler& handler_;
  Descriptor socket_;
  std::string unsent_;
  std::unique_ptr<Watch> watch_;
};

}  // namespace vorlix

// The loopback address, for the servers of the tests' own.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>

#include "platform/posix/Descriptor.h"

namespace vorlix {

struct Loopback : sockaddr_in {
  explicit Loopback(int port) : sockaddr_in() {
    sin_family = AF_INET;
    sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    sin_port = htons(static_cast<std::uint16_t>(port));
  }
  sockaddr* Plain() { return reinterpret_cast<sockaddr*>(this); }
};

// Listens on a port; on a free one, which then stands in `port`, when that is 0.
inline Descriptor ListenOnLoopback(int& port, int backlog = 8) {
  Descriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const int on = 1;
  setsockopt(listener.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  Loopback address(port);
  socklen_t length = sizeof(sockaddr_in);
  if (bind(listener.Get(), address.Plain(), length) != 0 || listen(listener.Get(), backlog) != 0 ||
      getsockname(listener.Get(), address.Plain(), &length) != 0) {
    throw std::runtime_error("the test's server cannot listen");
  }
  port = ntohs(address.sin_port);
  return listener;
}

}  // namespace vorlix

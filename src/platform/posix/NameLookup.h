// Finds the addresses of a host. The system's look-up may block for a long time, so it runs in a child process that
// lives just for that.
#pragma once

#include <functional>
#include <memory>
#include <netinet/in.h>
#include <string>
#include <sys/types.h>
#include <vector>

#include "platform/Reactor.h"
#include "platform/posix/Descriptor.h"

namespace vorlix {

// An address with its port.
union HostAddress {
  sockaddr any;
  sockaddr_in v4;
  sockaddr_in6 v6;
  socklen_t Size() const { return any.sa_family == AF_INET6 ? sizeof v6 : sizeof v4; }
};

struct HostAddresses {
  static constexpr int kMost = 16;
  std::vector<HostAddress> addresses;  // in the order to try them; at most kMost
  std::string failure;                 // why there are none
};

// The address that a text like "192.168.178.1" or "fd00::1" is; none for a name.
HostAddresses NumericAddress(const std::string& host, std::uint16_t port);

class NameLookup {
 public:
  // Calls `done` once, from the loop; the lookup may be destroyed in it. Destroying it earlier gives the look-up up.
  // There is no limit of time in here.
  NameLookup(Reactor& reactor, const std::string& host, std::uint16_t port, std::function<void(HostAddresses)> done);
  ~NameLookup();
  NameLookup(const NameLookup&) = delete;
  NameLookup& operator=(const NameLookup&) = delete;

 private:
  void OnReadable();

  std::function<void(HostAddresses)> done_;
  Descriptor answer_;
  pid_t child_ = -1;
  std::unique_ptr<Watch> watch_;
};

}  // namespace vorlix

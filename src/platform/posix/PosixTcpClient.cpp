#include "platform/posix/PosixTcpClient.h"

#include <cerrno>
#include <cstdint>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <system_error>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

struct Option {
  int level;
  int name;
  int value;
};

// Probes after 20 s of silence, three of them; and what was sent must be acknowledged within the same minute.
constexpr Option kOptions[] = {
    {SOL_SOCKET, SO_KEEPALIVE, 1}, {IPPROTO_TCP, TCP_KEEPIDLE, 20},         {IPPROTO_TCP, TCP_KEEPINTVL, 10},
    {IPPROTO_TCP, TCP_KEEPCNT, 3}, {IPPROTO_TCP, TCP_USER_TIMEOUT, 60'000}, {IPPROTO_TCP, TCP_NODELAY, 1},
};

// Without a socket errno tells why.
Descriptor MakeSocket(int family) {
  Descriptor made(socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!made) return made;
  for (const Option& option : kOptions) {
    setsockopt(made.Get(), option.level, option.name, &option.value, sizeof option.value);
  }
  return made;
}

}  // namespace

PosixTcpClient::PosixTcpClient(Reactor& reactor, Listener& listener)
    : reactor_(reactor), listener_(listener), deadline_(reactor.MakeTimer(kMostLookup, [this] { OnTimeOut(); })) {}

PosixTcpClient::~PosixTcpClient() {
  Close();
}

void PosixTcpClient::Connect(const std::string& host, std::uint16_t port) {
  Trapped(
      "PosixTcpClient_Connect",
      [&] {
        Close();
        peer_ = host + ":" + std::to_string(port);
        posted_ = std::make_shared<char>();
        reactor_.Post([this, host, port, weak = std::weak_ptr(posted_)] {
          if (!weak.expired()) Begin(host, port);
        });
      },
      host, port);
}

void PosixTcpClient::Close() {
  posted_.reset();
  lookup_.reset();
  deadline_->SetEnabled(false);
  attempt_.reset();
  socket_.Close();
  stream_.reset();
}

bool PosixTcpClient::Send(std::string_view bytes) {
  return stream_ != nullptr && stream_->Send(bytes);
}

void PosixTcpClient::Begin(const std::string& host, std::uint16_t port) {
  if (auto numeric = NumericAddress(host, port); !numeric.addresses.empty()) return OnAddresses(std::move(numeric));
  deadline_->SetInterval(kMostLookup);
  deadline_->SetEnabled(true);
  try {
    lookup_ = std::make_unique<NameLookup>(reactor_, host, port,
                                           [this](HostAddresses found) { OnAddresses(std::move(found)); });
  } catch (const std::system_error& fault) {
    Fail(FailureText("connect to " + peer_, fault.code().value()));
  }
}

void PosixTcpClient::OnAddresses(HostAddresses found) {
  lookup_.reset();
  if (found.addresses.empty()) return Fail("connect to " + peer_ + ": " + found.failure);
  addresses_ = std::move(found.addresses);
  next_ = 0;
  // Each gets its share of the time, so that one that never answers does not hide the next.
  deadline_->SetInterval(std::chrono::milliseconds(kMostConnect) / static_cast<int>(addresses_.size()));
  TryNext();
}

void PosixTcpClient::TryNext() {
  attempt_.reset();
  while (next_ < addresses_.size()) {
    const HostAddress& address = addresses_[next_++];
    socket_ = MakeSocket(address.any.sa_family);
    if (socket_ && (connect(socket_.Get(), &address.any, address.Size()) == 0 || errno == EINPROGRESS)) {
      attempt_ = reactor_.WatchDescriptor(socket_.Get(), [this](Reactor::Ready) { OnAttemptReady(); });
      attempt_->WantRead(false);
      attempt_->WantWrite(true);
      deadline_->SetEnabled(true);
      return;
    }
    lastError_ = errno;
  }
  Fail(FailureText("connect to " + peer_, lastError_));
}

void PosixTcpClient::OnAttemptReady() {
  socklen_t size = sizeof lastError_;
  if (getsockopt(socket_.Get(), SOL_SOCKET, SO_ERROR, &lastError_, &size) != 0) lastError_ = errno;
  if (lastError_ != 0) return TryNext();
  deadline_->SetEnabled(false);
  attempt_.reset();
  stream_ = std::make_unique<SocketStream>(reactor_, std::move(socket_), static_cast<SocketStream::Handler&>(*this));
  listener_.OnConnected();
}

void PosixTcpClient::OnTimeOut() {
  lastError_ = ETIMEDOUT;
  if (lookup_ == nullptr) return TryNext();
  Fail(FailureText("connect to " + peer_, ETIMEDOUT));
}

// The listener comes last: it may start anew or destroy this object.
void PosixTcpClient::Fail(const std::string& reason) {
  Close();
  listener_.OnClosed(reason);
}

void PosixTcpClient::OnBytes(SocketStream&, std::string_view bytes) {
  listener_.OnData(bytes);
}

void PosixTcpClient::OnEnd(SocketStream&, int error) {
  const std::string connection = "connection to " + peer_;
  Fail(error == 0 ? connection + ": ended by the other side" : FailureText(connection, error));
}

}  // namespace vorlix

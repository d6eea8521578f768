#include "platform/posix/SocketStream.h"

#include <array>
#include <cerrno>
#include <sys/socket.h>

namespace vorlix {
namespace {

bool IsOnlyBusy(int error) {
  return error == EAGAIN || error == EINTR;
}

}  // namespace

SocketStream::SocketStream(Reactor& reactor, Descriptor socket, Handler& handler)
    : handler_(handler),
      socket_(std::move(socket)),
      watch_(reactor.WatchDescriptor(socket_.Get(), [this](Reactor::Ready ready) { OnReady(ready); })) {}

bool SocketStream::Send(std::string_view bytes) {
  const bool wasIdle = unsent_.empty();
  unsent_ += bytes;
  return wasIdle ? Flush() : true;
}

// False when the connection is broken; reading tells of its end then.
bool SocketStream::Flush() {
  const auto sent = send(socket_.Get(), unsent_.data(), unsent_.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  const bool broken = sent < 0 && !IsOnlyBusy(errno);
  if (sent > 0) unsent_.erase(0, static_cast<std::size_t>(sent));
  if (broken) unsent_.clear();
  watch_->WantWrite(!unsent_.empty());
  return !broken;
}

void SocketStream::OnReady(Reactor::Ready ready) {
  if (ready.write) Flush();
  if (ready.read) Receive();
}

// One piece at a time, so that a flood on one connection leaves the others their turn.
void SocketStream::Receive() {
  std::array<char, 65536> buffer;
  const auto size = recv(socket_.Get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (size < 0 && IsOnlyBusy(errno)) return;
  if (size > 0) return handler_.OnBytes(*this, {buffer.data(), static_cast<std::size_t>(size)});
  watch_->WantRead(false);
  watch_->WantWrite(false);
  handler_.OnEnd(*this, size < 0 ? errno : 0);
}

}  // namespace vorlix

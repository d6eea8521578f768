#include "platform/posix/Acceptor.h"

#include <cerrno>
#include <chrono>
#include <sys/socket.h>
#include <utility>

namespace vorlix {
namespace {

constexpr std::chrono::seconds kRest{1};

bool IsShortage(int error) {
  return error == EMFILE || error == ENFILE || error == ENOBUFS || error == ENOMEM;
}

}  // namespace

Acceptor::Acceptor(Reactor& reactor, std::function<void(Descriptor)> accepted)
    : reactor_(reactor), accepted_(std::move(accepted)), resting_(reactor.MakeTimer(kRest, [this] { Rest(false); })) {}

void Acceptor::Start(Descriptor listening) {
  Stop();
  socket_ = std::move(listening);
  watch_ = reactor_.WatchDescriptor(socket_.Get(), [this](Reactor::Ready) { Accept(); });
}

void Acceptor::Stop() {
  resting_->SetEnabled(false);
  watch_.reset();
  socket_.Close();
}

void Acceptor::Accept() {
  Descriptor connection(accept4(socket_.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
  if (connection) return accepted_(std::move(connection));
  if (IsShortage(errno)) Rest(true);
}

void Acceptor::Rest(bool on) {
  watch_->WantRead(!on);
  resting_->SetEnabled(on);
}

}  // namespace vorlix

#include "platform/posix/SignalWatch.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace vorlix {
namespace {

sigset_t WatchedSignals() {
  sigset_t watched;
  sigemptyset(&watched);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction current {};
    sigaction(number, nullptr, &current);
    if (current.sa_handler != SIG_IGN) sigaddset(&watched, number);
  }
  return watched;
}

}  // namespace

SignalBlock::SignalBlock() : signals_(WatchedSignals()) {
  pthread_sigmask(SIG_BLOCK, &signals_, &formerMask_);
}

void SignalBlock::Lift() const {
  pthread_sigmask(SIG_SETMASK, &formerMask_, nullptr);
}

SignalWatch::SignalWatch(Reactor& reactor, const SignalBlock& block, std::function<void(int signal)> onSignal)
    : block_(block),
      onSignal_(std::move(onSignal)),
      formerPipe_(std::signal(SIGPIPE, SIG_IGN)),
      formerQuota_(std::signal(SIGXFSZ, SIG_IGN)) {
  signals_ = Descriptor(signalfd(-1, &block_.Signals(), SFD_NONBLOCK | SFD_CLOEXEC));
  watch_ = reactor.WatchDescriptor(signals_.Get(), [this](Reactor::Ready) { OnReadable(); });
}

SignalWatch::~SignalWatch() {
  std::signal(SIGPIPE, formerPipe_);
  std::signal(SIGXFSZ, formerQuota_);
  block_.Lift();
}

void SignalWatch::OnReadable() {
  signalfd_siginfo info{};
  if (read(signals_.Get(), &info, sizeof info) == sizeof info) onSignal_(static_cast<int>(info.ssi_signo));
}

}  // namespace vorlix

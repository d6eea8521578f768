#include "platform/posix/NameLookup.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <netdb.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "platform/posix/ChildSetup.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

// What goes through the pipe. It fits into one write that is never torn.
struct Answer {
  int error = 0;        // of getaddrinfo()
  int systemError = 0;  // with EAI_SYSTEM
  int count = 0;
  std::array<HostAddress, HostAddresses::kMost> addresses{};
};
static_assert(sizeof(Answer) <= PIPE_BUF);

Answer AskSystem(const std::string& host, std::uint16_t port, int flags) {
  Answer answer;
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = flags | AI_NUMERICSERV;
  addrinfo* list = nullptr;
  answer.error = getaddrinfo(SystemText(host).c_str(), std::to_string(port).c_str(), &hints, &list);
  answer.systemError = errno;
  for (const addrinfo* item = list; item != nullptr && answer.count < HostAddresses::kMost; item = item->ai_next) {
    if (item->ai_addrlen > sizeof(HostAddress)) continue;
    std::memcpy(&answer.addresses[static_cast<std::size_t>(answer.count++)], item->ai_addr, item->ai_addrlen);
  }
  if (list != nullptr) freeaddrinfo(list);
  return answer;
}

HostAddresses Unpack(const Answer& answer) {
  HostAddresses result;
  result.addresses.assign(answer.addresses.begin(), answer.addresses.begin() + answer.count);
  if (!result.addresses.empty()) return result;
  result.failure = FromUtf8(answer.error == EAI_SYSTEM ? std::generic_category().message(answer.systemError)
                                                       : gai_strerror(answer.error == 0 ? EAI_NONAME : answer.error));
  return result;
}

// The child must not outlive us: it would keep nothing of ours, but nobody would wait for it.
[[noreturn]] void LookUpInChild(int pipe, const std::string& host, std::uint16_t port) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  CloseDescriptorsBut(pipe);
  RestoreSignals();
  const Answer answer = AskSystem(host, port, AI_ADDRCONFIG);
  static_cast<void>(!write(pipe, &answer, sizeof answer));
  _exit(0);
}

}  // namespace

HostAddresses NumericAddress(const std::string& host, std::uint16_t port) {
  return Unpack(AskSystem(host, port, AI_NUMERICHOST));
}

NameLookup::NameLookup(Reactor& reactor, const std::string& host, std::uint16_t port,
                       std::function<void(HostAddresses)> done)
    : done_(std::move(done)) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  answer_ = Descriptor(ends[0]);
  const Descriptor writing(ends[1]);
  child_ = fork();
  if (child_ == 0) LookUpInChild(writing.Get(), host, port);
  // Without a child the pipe is closed at once, and that is the answer.
  watch_ = reactor.WatchDescriptor(answer_.Get(), [this](Reactor::Ready) { OnReadable(); });
}

NameLookup::~NameLookup() {
  if (child_ <= 0) return;
  kill(child_, SIGKILL);
  while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void NameLookup::OnReadable() {
  Answer answer;
  const auto size = read(answer_.Get(), &answer, sizeof answer);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (size != sizeof answer) answer = {.error = EAI_AGAIN};
  watch_.reset();
  const auto done = std::move(done_);
  done(Unpack(answer));
}

}  // namespace vorlix

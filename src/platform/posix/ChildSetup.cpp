#include "platform/posix/ChildSetup.h"

#include <algorithm>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace vorlix {
namespace {

// For a kernel that cannot do it in one call.
int EndOfDescriptors() {
  rlimit limit{};
  constexpr rlim_t kMost = 65536;
  return getrlimit(RLIMIT_NOFILE, &limit) == 0 ? static_cast<int>(std::min(limit.rlim_cur, kMost)) : 1024;
}

void CloseRange(int first, int last) {
  if (first > last || close_range(static_cast<unsigned>(first), static_cast<unsigned>(last), 0) == 0) return;
  for (int number = first; number <= std::min(last, EndOfDescriptors()); ++number)
    close(number);
}

}  // namespace

void RestoreSignals() {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGXFSZ, SIG_DFL);
}

void CloseDescriptorsOnExec() {
  if (close_range(3, UINT_MAX, CLOSE_RANGE_CLOEXEC) == 0) return;
  for (int number = 3; number < EndOfDescriptors(); ++number)
    fcntl(number, F_SETFD, FD_CLOEXEC);
}

void CloseDescriptorsBut(int kept) {
  CloseRange(3, kept - 1);
  CloseRange(std::max(3, kept + 1), INT_MAX);
}

}  // namespace vorlix

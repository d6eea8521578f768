#include "desktop/desktop_check.h"

#include <QGuiApplication>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

namespace vorlix {
namespace {

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

void EndSilently(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) _exit(1);
}

// The system ends this process then, wherever it hangs.
void EndAfter(std::chrono::seconds limit) {
  std::signal(SIGALRM, SIG_DFL);
  sigset_t alarms;
  sigemptyset(&alarms);
  sigaddset(&alarms, SIGALRM);
  sigprocmask(SIG_UNBLOCK, &alarms, nullptr);
  alarm(static_cast<unsigned>(limit.count()));
}

}  // namespace

bool IsDesktopAvailable(std::chrono::seconds patience) {
  if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("QT_QPA_PLATFORM")) return false;
  const pid_t child = fork();
  if (child == 0) {
    EndAfter(patience);
    qInstallMessageHandler(EndSilently);
    int argumentCount = 1;
    char programName[] = "vorlix";
    char* argumentList[] = {programName, nullptr};
    const QGuiApplication application(argumentCount, argumentList);
    _exit(QGuiApplication::primaryScreen() != nullptr ? 0 : 1);
  }
  int status = 0;
  while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return child > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace vorlix

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <unistd.h>

#include "app/CommandLine.h"
#include "app/SystemFolders.h"
#include "app/fMain.h"
#include "console/TerminalScreen.h"
#ifdef VORLIX_DESKTOP
#include "desktop/DesktopScreen.h"
#include "desktop/desktop_check.h"
#endif
#include "platform/posix/Autostart.h"
#include "platform/posix/Capi20Library.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/posix/ProcessSound.h"
#include "platform/posix/SignalWatch.h"
#include "platform/posix/SocketMessageLink.h"
#include "platform/posix/SystemClock.h"
#include "platform/posix/loaded_modules.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace {

using namespace vorlix;

int Print(const std::string& text, FILE* where, int code) {
  std::fprintf(where, "%s\n", ToUtf8(text).c_str());
  return code;
}

int Refuse(const std::string& unnamable) {
  const std::string why = LoadLangKey("CommandLine_Msg_Unnamable",
                                      "Dieser Ordner kann nicht benutzt werden, sein Name hat Zeichen außerhalb von "
                                      "Windows-1252 (--data wählt einen anderen Datenordner):"_ansi);
  std::fprintf(stderr, "%s %s\n", ToUtf8(why).c_str(), WithoutControls(unnamable).c_str());
  return 1;
}

// The program between the machine and its screen, from start to end.
int RunProgram(Reactor& reactor, Screen& screen, CallFeedView& lines, const SignalBlock& block, const CommandLine& line,
               const Folders::Surroundings& surroundings) {
  PosixFileStore files;
  PosixProcesses processes;
  SocketMessageLink link(reactor);
  SocketMessageLink serviceLink(reactor);
  Capi20Library driver;
  ProcessSound sound(reactor);
  std::function<void(bool)> setAutostart;
  // A copy on a folder of its own is no more than a visitor on this desktop.
  if (surroundings.chosenFolder.empty()) {
    setAutostart = [&](bool wanted) {
      const IoResult set =
          Autostart(files, Autostart::ConfigFolder(), surroundings.programFolder + "/vorlix").Set(wanted);
      if (!set) ErrorHandling().ErrorLogForceWrite("Autostart_Set", {wanted}, set.error, set.text);
    };
  }
  fMain program({reactor, files, link, serviceLink, processes, driver, sound, screen, lines, setAutostart}, line,
                surroundings);
  const SignalWatch signals(reactor, block, [&program](int) { program.Close(UnloadReason::kSystem); });
  // The helper programs work on the same data folder.
  setenv("VORLIX_DATA", ToUtf8(program.DataFolder()).c_str(), 1);
  if (program.Form_Load()) reactor.Run();
  return program.ExitStatus();
}

int RunOnTerminal(const SignalBlock& block, const CommandLine& line, const Folders::Surroundings& surroundings) {
  PollReactor reactor;
  TerminalScreen screen(reactor.GetClock());
  // A job in the background must not be stopped for reading from its terminal: it gets an error and types nothing.
  std::signal(SIGTTIN, SIG_IGN);
  std::unique_ptr<Watch> typed;
  typed = reactor.WatchDescriptor(STDIN_FILENO, [&](Reactor::Ready) {
    if (!screen.TakeTyped()) typed.reset();
  });
  return RunProgram(reactor, screen, screen.Lines(), block, line, surroundings);
}

#ifdef VORLIX_DESKTOP
class NoLines : public CallFeedView {
 public:
  void ShowLine(const std::string&) override {}
};

int RunOnDesktop(const SignalBlock& block, const CommandLine& line, const Folders::Surroundings& surroundings) {
  const SystemClock clock;
  DesktopScreen screen(clock, surroundings.programFolder + "/base/icons", LoadedModules);
  NoLines lines;
  return RunProgram(screen.Loop(), screen, lines, block, line, surroundings);
}

bool HasDesktop() {
  return IsDesktopAvailable();
}
#else
constexpr auto RunOnDesktop = RunOnTerminal;

bool HasDesktop() {
  return false;
}
#endif

int Run(const CommandLine& line, const Folders::Surroundings& surroundings) {
  const bool onDesktop = !line.console && HasDesktop();
  const SignalBlock block;  // the toolkit begins threads of its own
  return (onDesktop ? RunOnDesktop : RunOnTerminal)(block, line, surroundings);
}

}  // namespace

int main(int count, char** arguments) {
  const CommandLine line = ParseCommandLine({arguments + 1, arguments + count});
  if (!line.error.empty()) return Print(line.error + "\n" + HelpText(), stderr, 2);
  if (line.help) return Print(HelpText(), stdout, 0);
  if (line.version) return Print(VersionText(), stdout, 0);
  const SystemFolders folders = FindSystemFolders(line.dataFolder);
  if (!folders.unnamable.empty()) return Refuse(folders.unnamable);
  return Run(line, folders.surroundings);
}

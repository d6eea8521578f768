#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unistd.h>

#include "app/CommandLine.h"
#include "app/SystemFolders.h"
#include "app/fMain.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/posix/SignalWatch.h"
#include "platform/posix/SocketMessageLink.h"
#include "services/ansi.h"
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

int Run(const CommandLine& line, const Folders::Surroundings& surroundings) {
  PollReactor reactor;
  PosixFileStore files;
  PosixProcesses processes;
  SocketMessageLink link(reactor);
  TerminalView terminal;
  fMain program({reactor, files, link, processes, terminal}, line, surroundings);
  const SignalWatch signals(reactor, [&program](int) { program.Close(UnloadReason::kSystem); });
  // A job in the background must not be stopped for reading from its terminal: it gets an error and types nothing.
  std::signal(SIGTTIN, SIG_IGN);
  std::unique_ptr<Watch> typed;
  typed = reactor.WatchDescriptor(STDIN_FILENO, [&](Reactor::Ready) {
    if (!program.TakeTyped()) typed.reset();
  });
  // The helper programs work on the same data folder.
  setenv("VORLIX_DATA", ToUtf8(program.DataFolder()).c_str(), 1);
  if (program.Form_Load()) reactor.Run();
  return program.ExitStatus();
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

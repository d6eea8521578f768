#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <unistd.h>

#include "app/CommandLine.h"
#include "app/fMain.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/posix/SignalWatch.h"
#include "platform/posix/SocketMessageLink.h"
#include "services/ansi.h"

namespace {

using namespace vorlix;

// One folder has one name, however it was written: a second copy is known by it.
std::string CanonicalFolder(const std::string& folder) {
  if (folder.empty()) return {};
  std::error_code error;
  const auto path = std::filesystem::weakly_canonical(std::filesystem::absolute(ToUtf8(folder), error), error);
  return error ? folder : FromUtf8(path.string());
}

std::string HomeFolder() {
  const std::string home = EnvironmentText("HOME");
  const passwd* user = home.empty() ? getpwuid(getuid()) : nullptr;
  return user == nullptr ? home : FromUtf8(user->pw_dir);
}

Folders::Surroundings SurroundingsOf(const CommandLine& line) {
  return {.programFolder = ProgramFolder(),
          .dataHome = EnvironmentText("XDG_DATA_HOME"),
          .home = HomeFolder(),
          .override = CanonicalFolder(line.dataFolder.empty() ? EnvironmentText("VORLIX_DATA") : line.dataFolder)};
}

int Print(const std::string& text, FILE* where, int code) {
  std::fprintf(where, "%s\n", ToUtf8(text).c_str());
  return code;
}

int Run(const CommandLine& line) {
  PollReactor reactor;
  PosixFileStore files;
  PosixProcesses processes;
  SocketMessageLink link(reactor);
  TerminalView terminal;
  fMain program({reactor, files, link, processes, terminal}, line, SurroundingsOf(line));
  const SignalWatch signals(reactor, [&program](int) { program.Close(UnloadReason::kSystem); });
  // The helper programs work on the same data folder.
  setenv("VORLIX_DATA", ToUtf8(program.DataFolder()).c_str(), 1);
  if (program.Form_Load()) reactor.Run();
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const CommandLine line = ParseCommandLine({arguments + 1, arguments + count});
  if (!line.error.empty()) return Print(line.error + "\n" + HelpText(), stderr, 2);
  if (line.help) return Print(HelpText(), stdout, 0);
  if (line.version) return Print(VersionText(), stdout, 0);
  return Run(line);
}

#include "companions/shared/companion_main.h"

#include <cstdio>
#include <memory>

#include "companions/shared/ServerSettings.h"
#include "data/FileLogStore.h"
#include "data/SpecSwitches.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/posix/PosixTcpClient.h"
#include "platform/posix/SignalWatch.h"
#include "platform/posix/SocketMessageLink.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

// The main program's data folder, for reading settings and writing logs.
class DataFolder {
 public:
  explicit DataFolder(const CivilClock& clock) : clock_(clock) {}

  ServerAddress Server(const CompanionProgram& program) { return ReadServer(ini_, program.section); }
  bool IsLogged(const CompanionProgram& program) { return LoadSpecSwitches(ini_, folders_).Debug.*program.log; }
  void Log(const std::string& text) { logs_.FileWrite_Log(clsErrorHandling::kFileLogDebug, text, 0); }

 private:
  const CivilClock& clock_;
  PosixFileStore store_;
  Folders folders_{store_,
                   {.programFolder = ProgramFolder(),
                    .dataHome = EnvironmentText("XDG_DATA_HOME"),
                    .home = EnvironmentText("HOME"),
                    .chosenFolder = EnvironmentText("VORLIX_DATA")}};
  WriteBlocks blocks_;
  modAPI_INI ini_{store_, folders_, blocks_};
  clsFiles::Rotation rotation_;
  clsFiles files_{store_, ini_, clock_, rotation_};
  FileLogStore logs_{files_, folders_};
};

void Print(std::string_view name, const std::string& text) {
  std::fprintf(stderr, "%s: %s\n", std::string(name).c_str(), ToUtf8(text).c_str());
}

// Nothing where nobody wants to know.
std::function<void(const std::string&)> DebugOutput(std::string_view name, bool shown, bool logged, DataFolder& data) {
  if (!shown && !logged) return nullptr;
  return [name, shown, logged, &data](const std::string& text) {
    if (shown) Print(name, text);
    if (logged) data.Log(std::string(name) + " " + text);
  };
}

}  // namespace

int RunCompanion(const CompanionProgram& program, int count, char** arguments) {
  const CompanionArguments given = ParseCompanionArguments(count, arguments);
  if (given.main == 0) {
    Print(program.name, "started by Vorlix itself, with a window handle");
    return 2;
  }
  PollReactor reactor;
  const SignalBlock block;
  const SignalWatch signals(reactor, block, [&reactor](int) { reactor.Quit(); });
  DataFolder data(reactor.GetClock());
  SocketMessageLink link(reactor);
  SocketCompanion companion(
      {reactor, link,
       [&reactor](TcpClient::Listener& listener) { return std::make_unique<PosixTcpClient>(reactor, listener); },
       DebugOutput(program.name, given.debug, data.IsLogged(program), data)},
      given.main, program.source, program.translate);
  if (!companion.Start(data.Server(program))) {
    Print(program.name, "the link to the main program cannot be opened");
    return 1;
  }
  reactor.Run();
  return 0;
}

}  // namespace vorlix

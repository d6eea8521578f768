// The helper that holds the connection to the router's call monitor. The main program starts it and gives it its own
// window handle; every line of the router goes back over the local link.
#include <cstdio>
#include <memory>

#include "companions/shared/SocketCompanion.h"
#include "data/Folders.h"
#include "data/modAPI_INI.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/PosixFileStore.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/posix/PosixTcpClient.h"
#include "platform/posix/SignalWatch.h"
#include "platform/posix/SocketMessageLink.h"
#include "services/ansi.h"

namespace {

using namespace vorlix;

constexpr std::uint32_t kSource = 16;
constexpr std::string_view kSettings = R"(\data\sett_socketavm.ini)";

ServerAddress ReadServer() {
  PosixFileStore files;
  const Folders folders(files, {.programFolder = ProgramFolder(),
                                .dataHome = EnvironmentText("XDG_DATA_HOME"),
                                .home = EnvironmentText("HOME"),
                                .override = EnvironmentText("VORLIX_DATA")});
  const WriteBlocks blocks;
  modAPI_INI ini(files, folders, blocks);
  return {ini.GetSettStr("FritzBox", "Host", "fritz.box", kSettings, true),
          static_cast<std::uint16_t>(ini.GetSettLng("FritzBox", "Port", 1012, 0, 65535, false, kSettings))};
}

void PrintDebug(const std::string& text) {
  std::fprintf(stderr, "SocketAVM: %s\n", ToUtf8(text).c_str());
}

}  // namespace

int main(int count, char** arguments) {
  const CompanionArguments given = ParseCompanionArguments(count, arguments);
  if (given.main == 0) {
    std::fprintf(stderr, "SocketAVM is started by Vorlix itself, with a window handle.\n");
    return 2;
  }
  PollReactor reactor;
  const SignalWatch signals(reactor, [&reactor](int) { reactor.Quit(); });
  SocketMessageLink link(reactor);
  SocketCompanion companion(
      {reactor, link,
       [&reactor](TcpClient::Listener& listener) { return std::make_unique<PosixTcpClient>(reactor, listener); },
       given.debug ? PrintDebug : nullptr},
      given.main, kSource);
  if (!companion.Start(ReadServer())) {
    std::fprintf(stderr, "SocketAVM: the link to the main program cannot be opened.\n");
    return 1;
  }
  reactor.Run();
  return 0;
}

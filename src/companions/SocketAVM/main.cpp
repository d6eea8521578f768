// The helper that holds the connection to the router's call monitor. The main program starts it and gives it its own
// window handle; every line of the router goes back over the local link.
#include "companions/shared/companion_main.h"

int main(int count, char** arguments) {
  using namespace vorlix;
  return RunCompanion({.name = "SocketAVM",
                       .source = kHelperAVM,
                       .section = "FritzBox",
                       .log = &DebugSwitches::LogAVM,
                       .translate = {}},
                      count, arguments);
}

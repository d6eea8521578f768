// The helper that holds the connection to an NCID server. The main program starts it and gives it its own window
// handle; the calls among the server's lines go back over the local link.
#include "companions/SocketNCID/NCIDLines.h"
#include "companions/shared/companion_main.h"

int main(int count, char** arguments) {
  using namespace vorlix;
  return RunCompanion({.name = "SocketNCID",
                       .source = kHelperNCID,
                       .section = "NCID",
                       .log = &DebugSwitches::LogNCID,
                       .translate = NCIDLinesToHandOver},
                      count, arguments);
}

// The lines of a router, one after the other.
#include "check.h"
#include "fakes/SocketLines.h"
#include "services/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  fakes::RouterLine router;
  router.switches.options.DebugAVM = router.switches.options.AVM_SaveOutgoingCalls = true;
  for (const std::string& line : Split(fuzz::Text(data, size), "\n"))
    router.monitor.AVM_GetMessage(line, false);
  router.monitor.ConnectionLost();
  for (const std::string& entry : router.tape)
    fuzz::Check(WithoutControls(entry) == entry, "no control character goes beyond the line");
  return 0;
}

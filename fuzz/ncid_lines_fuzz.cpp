// The lines of an NCID server, one after the other.
#include "check.h"
#include "fakes/SocketLines.h"
#include "services/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  fakes::NcidLine ncid;
  ncid.switches.options.DebugNCID = true;
  for (const std::string& line : Split(fuzz::Text(data, size), "\n"))
    ncid.monitor.NCID_GetMessage(line, false);
  for (const std::string& entry : ncid.tape)
    fuzz::Check(WithoutControls(entry) == entry, "no control character goes beyond the line");
  return 0;
}

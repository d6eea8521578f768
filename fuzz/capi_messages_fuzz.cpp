// A driver that says anything: messages one after the other, each behind its length in one byte.
#include <map>

#include "check.h"
#include "fakes/CapiCalls.h"
#include "fakes/ScriptedCapiDriver.h"

namespace vorlix {
namespace {

using fuzz::Check;

// Each section of a new call must end before the next begins, and no call may stay.
class Judge : public CallEvents, public NoCallWatch {
 public:
  bool locked = false;
  std::map<std::int32_t, bool> open;
  CapiLine* line = nullptr;

  DateTime CAPI_FunctionsForwarder(int, int event, std::int32_t PLCI, std::int16_t, std::string& number,
                                   const std::string& MSN, bool) override {
    if (event == kEventLock || event == kEventNewCallEnd) {
      Check(locked == (event == kEventNewCallEnd), "sections come one after the other");
      locked = !locked;
    }
    if (event == kEventNewCall) {
      Check(locked && !number.empty(), "a new call has a number, in its section");
      Check(MSN.find_first_not_of("0123456789") == std::string::npos, "an own number is made of digits");
      open[PLCI] = true;
      if (number.back() == '1') line->CAPIResponse(true, PLCI, false, 1);
    }
    if (event == kEventCallEnd) open.erase(PLCI);
    return {};
  }
};

}  // namespace
}  // namespace vorlix

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  fakes::ScriptedCapiDriver driver;
  Judge judge;
  fakes::CapiCalls line(driver, judge, judge);
  judge.line = &line.calls;
  line.switches.options.Debug = true;
  line.session.CAPIInit(true);
  CapiReader reader(fuzz::Text(data, size));
  std::size_t messages = 0;
  for (; !reader.Rest().empty(); ++messages)
    driver.script.emplace_back(reader.Structure());
  for (std::size_t i = 0; i < messages; ++i)
    line.calls.CAPI_GetMessage(false, 0);
  Check(driver.script.empty(), "every message is read");
  for (const std::string& hex : driver.sent) {
    const std::string sent = fakes::FromHex(hex);
    Check(sent.size() == static_cast<unsigned char>(sent[0]), "what is sent is as long as it says");
  }
  driver.whenEmpty = kCapiIllegalApplication;
  line.calls.CAPI_GetMessage(false, 0);
  Check(judge.open.empty() && !judge.locked, "no call stays");
  return 0;
}

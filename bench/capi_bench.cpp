// From the driver's indication of a call to the pipeline's event, without the timer between: the messages alone, and
// through the machine's library from a driver in the network.
#include <benchmark/benchmark.h>

#include "fakes/CapiCalls.h"
#include "fakes/CapiServer.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/Capi20Library.h"

namespace vorlix {
namespace {

constexpr const char* kCall =
    "2e 00 07 00 02 82 01 80 01 01 00 00 10 00 07 81 35 35 35 30 31 32 0c 21 83 33 30 31 32 33 34 35 36 37 38 00 00 "
    "03 90 90 a3 00 02 91 81 00";
constexpr const char* kCallEnd = "0e 00 07 00 04 82 03 80 01 01 00 00 90 34";

class CountedCalls : public CallEvents, public NoCallWatch {
 public:
  int begun = 0;
  int ended = 0;
  DateTime CAPI_FunctionsForwarder(int, int event, std::int32_t, std::int16_t, std::string&, const std::string&,
                                   bool) override {
    if (event == kEventNewCall) ++begun;
    if (event == kEventCallEnd) ++ended;
    return {};
  }
};

// Hands out two messages in turn and takes what is sent.
class QuickDriver : public fakes::ScriptedCapiDriver {
 public:
  std::uint32_t CAPI_GET_MESSAGE(std::uint32_t, std::string& message) override {
    message = std::exchange(ends_, !ends_) ? end_ : call_;
    return kCapiOk;
  }
  std::uint32_t CAPI_PUT_MESSAGE(std::uint32_t, std::string_view message) override {
    benchmark::DoNotOptimize(message);
    return kCapiOk;
  }

 private:
  const std::string call_ = fakes::FromHex(kCall), end_ = fakes::FromHex(kCallEnd);
  bool ends_ = false;
};

void IndicationToEvent(benchmark::State& state) {
  QuickDriver driver;
  CountedCalls events;
  fakes::CapiCalls line(driver, events, events);
  line.session.CAPIInit(true);
  for (auto _ : state) {
    line.calls.CAPI_GetMessage(false, 0);
    line.calls.CAPI_GetMessage(false, 0);
  }
  if (events.begun != events.ended) state.SkipWithError("a call was lost");
}
BENCHMARK(IndicationToEvent);

void IndicationThroughTheLibrary(benchmark::State& state) {
  TemporaryFolder home;
  CapiServer server;
  server.WriteConfiguration(home.Path());
  const TemporaryVariable variable("HOME", home.Path());
  Capi20Library driver;
  CountedCalls events;
  fakes::CapiCalls line(driver, events, events);
  line.session.CAPIInit(true);
  if (!line.session.IsUp()) {
    state.SkipWithError("libcapi20 is not on this machine");
    return;
  }
  for (auto _ : state) {
    server.Say(kCall);
    for (const int before = events.begun; events.begun == before;)
      line.calls.CAPI_GetMessage(false, 0);
    server.Say(kCallEnd);
    for (const int before = events.ended; events.ended == before;)
      line.calls.CAPI_GetMessage(false, 0);
  }
  line.session.CAPIRelease(false);
}
BENCHMARK(IndicationThroughTheLibrary)->Iterations(2000)->UseRealTime();

}  // namespace
}  // namespace vorlix

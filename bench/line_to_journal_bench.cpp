// How long a router's line takes until its journal line is on disk: through the real program and its helper, and beside
// it the same line through one TCP connection into the same kind of file, which is the least any program needs.
#include <fcntl.h>
#include <netinet/tcp.h>
#include <sys/inotify.h>
#include <thread>

#include <benchmark/benchmark.h>

#include "app/RunningVorlix.h"
#include "app/TestRouter.h"
#include "fakes/TemporaryFolder.h"

namespace vorlix {
namespace {

// Blocks until a file has grown.
class Growth {
 public:
  explicit Growth(const std::string& path) : path_(path), notify_(inotify_init1(IN_CLOEXEC)) {
    WriteFile(path, "");
    inotify_add_watch(notify_, path.c_str(), IN_MODIFY);
  }
  ~Growth() { close(notify_); }
  void WaitBeyond(std::uintmax_t size) {
    char events[4096];
    while (std::filesystem::file_size(path_) <= size) {
      if (read(notify_, events, sizeof events) < 0) return;
    }
  }
  std::uintmax_t Size() const { return std::filesystem::file_size(path_); }

 private:
  std::string path_;
  int notify_;
};

std::string CallLine(int number) {
  return "17.06.20 10:30:57;CALL;1;11;77;0" + std::to_string(number) + ";SIP0;";
}
constexpr const char* kEndLine = "17.06.20 10:31:00;DISCONNECT;1;0;";

void DirectTcp(benchmark::State& state) {
  TemporaryFolder folder;
  TestRouter router;
  Growth journal(folder.Path() + "/journal.txt");
  const int client = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(router.Port()));
  if (connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || !router.WaitForClient()) {
    state.SkipWithError("no connection");
    return;
  }
  std::thread reader([&, path = folder.Path() + "/journal.txt"] {
    char line[512];
    for (ssize_t got = 0; (got = read(client, line, sizeof line)) > 0;) {
      const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
      if (write(file, line, static_cast<std::size_t>(got)) < 0) break;
      close(file);
    }
  });
  for (auto _ : state) {
    const auto size = journal.Size();
    router.SendLine(kEndLine);
    journal.WaitBeyond(size);
  }
  router.GoAway();
  reader.join();
  close(client);
}
BENCHMARK(DirectTcp)->Iterations(3000)->Repetitions(5)->UseRealTime()->ReportAggregatesOnly();

void ThroughHelperAndProgram(benchmark::State& state) {
  TemporaryFolder folder;
  TestRouter router;
  WriteSettings(folder.Path(), router.Port());
  Growth journal(folder.Path() + "/data/Vorlixjournal.txt");
  RunningVorlix program(folder.Path());
  if (!router.WaitForClient() || !program.Shows("AVM OK")) {
    state.SkipWithError("the program does not come up");
    return;
  }
  int number = 100000;
  for (auto _ : state) {
    state.PauseTiming();
    program.Output();
    router.SendLine(CallLine(++number));
    std::this_thread::sleep_for(std::chrono::microseconds(300));
    const auto size = journal.Size();
    state.ResumeTiming();
    router.SendLine(kEndLine);
    journal.WaitBeyond(size);
  }
  program.End();
}
BENCHMARK(ThroughHelperAndProgram)->Iterations(3000)->Repetitions(5)->UseRealTime()->ReportAggregatesOnly();

// 100,000 lines as fast as they are taken; every one of the 50,000 calls must be in the journal.
void FloodOfHundredThousandLines(benchmark::State& state) {
  constexpr int kCalls = 50000;
  for (auto _ : state) {
    state.PauseTiming();
    TemporaryFolder folder;
    TestRouter router;
    WriteSettings(folder.Path(), router.Port());
    RunningVorlix program(folder.Path());
    if (!router.WaitForClient() || !program.Shows("AVM OK")) {
      state.SkipWithError("the program does not come up");
      return;
    }
    state.ResumeTiming();
    std::thread sender([&] {
      for (int i = 0; i < kCalls; ++i) {
        router.Send(CallLine(100000 + i) + "\r\n" + kEndLine + "\r\n");
      }
    });
    const bool done = program.WaitFor([&] { return program.Output().find("Erfolglos   0149999") != std::string::npos; },
                                      std::chrono::seconds(120));
    sender.join();
    state.PauseTiming();
    const std::string journal = program.Journal();
    const auto lines = std::count(journal.begin(), journal.end(), '\n');
    if (!done || lines != kCalls) state.SkipWithError("lines were lost");
    state.counters["journal lines"] = static_cast<double>(lines);
    program.End();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * 2 * kCalls);
}
BENCHMARK(FloodOfHundredThousandLines)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

// From the start of the program to "line ready": the router's connection is shown.
void StartToLineReady(benchmark::State& state) {
  TemporaryFolder folder;
  TestRouter router;
  WriteSettings(folder.Path(), router.Port());
  for (auto _ : state) {
    RunningVorlix program(folder.Path());
    router.WaitForClient();
    program.Shows("AVM OK");
    state.PauseTiming();
    program.End();
    state.ResumeTiming();
  }
}
BENCHMARK(StartToLineReady)->Iterations(20)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorlix

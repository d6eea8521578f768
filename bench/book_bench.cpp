// The phone book at 10,000 entries: reading it, a look-up, and the write that a counted call costs.
#include <benchmark/benchmark.h>

#include "core/null_ports.h"
#include "data/modBook.h"
#include "fakes/FakeClock.h"
#include "fakes/ManualReactor.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/PosixFileStore.h"

namespace vorlix {
namespace {

constexpr int kEntries = 10000;

class NoBoxes : public MsgBoxDoor {
 public:
  MsgBoxAnswer Show(std::string_view, int, std::string_view, bool) override { return MsgBoxAnswer::kOk; }
};

std::string Number(int entry) {
  return "0171" + std::to_string(1000000 + entry);
}

std::string FullBook() {
  std::string text;
  for (int i = 0; i < kEntries; ++i) {
    text += "Meier " + std::to_string(i) + ";" + Number(i) + ";3;0;0;0;Waldweg 17, 12345 Musterstadt;;0;1;;;;[vcd(";
    if (i % 10 == 0) text += "1;;Anna Meier;1;Geburtstag;24.12./1970;0;;/;0;;/;;;anna.jpg";
    text += ")vcd]\r\n";
  }
  return text;
}

// The book on a folder of the disk.
struct BookRoom {
  BookRoom() {
    const IoResult made = OverwriteMakingFolder(store, book.BookPath(), FullBook());
    if (made) book.BookData_Read();
  }

  TemporaryFolder folder;
  PosixFileStore store;
  Folders folders{store, {.programFolder = "/nowhere", .dataHome = {}, .home = {}, .chosenFolder = folder.Path()}};
  WriteBlocks blocks;
  modAPI_INI ini{store, folders, blocks};
  FakeClock clock;
  clsFiles::Rotation rotation;
  clsFiles files{store, ini, clock, rotation};
  ManualReactor loop;
  PlainNumbers numbers;
  NoSchedules schedules;
  NoBoxes boxes;
  modAll_MsgBox messages{boxes};
  NoAskForDoubleItems doubles;
  NoBookWindow window;
  NoBlackListAdding blackList;
  NoLoadProgress progress;
  JournalCache cache;
  JournalFlags flags;
  modBook book{{files,
                folders,
                blocks,
                loop,
                numbers,
                schedules,
                messages,
                doubles,
                window,
                blackList,
                progress,
                cache,
                flags,
                {},
                {},
                {},
                {},
                {}}};
};

void ReadBook(benchmark::State& state) {
  BookRoom room;
  for (auto _ : state) {
    room.book.BookData_Read();
  }
  state.counters["entries"] = static_cast<double>(room.book.BookCollection().Count());
}
BENCHMARK(ReadBook)->Unit(benchmark::kMillisecond);

void LookUpCaller(benchmark::State& state) {
  BookRoom room;
  oDataCall call(&room.numbers);
  call.DataNumber(Number(kEntries - 1));
  for (auto _ : state) {
    benchmark::DoNotOptimize(room.book.GetNumberData(call, false, false));
  }
}
BENCHMARK(LookUpCaller)->Unit(benchmark::kMicrosecond);

void CountCaller(benchmark::State& state) {
  BookRoom room;
  oDataCall call(&room.numbers);
  call.DataNumber(Number(kEntries / 2));
  for (auto _ : state) {
    benchmark::DoNotOptimize(room.book.GetNumberData(call, true, true));
  }
}
BENCHMARK(CountCaller)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorlix

// The files of the data room at their full size: settings, and a journal of 25,000 lines.
#include <benchmark/benchmark.h>

#include "app/RunningVorlix.h"
#include "core/null_ports.h"
#include "data/modJournal.h"
#include "data/modSettings.h"
#include "fakes/FakeClock.h"
#include "platform/posix/PosixFileStore.h"

namespace vorlix {
namespace {

class SilentDoor : public MsgBoxDoor {
 public:
  MsgBoxAnswer Show(std::string_view, int, std::string_view, bool) override { return MsgBoxAnswer::kOk; }
};

// The data room on a folder of the disk.
struct DataRoom {
  TempFolder folder;
  PosixFileStore files;
  Folders folders{files, {.programFolder = "/nowhere", .dataHome = {}, .home = {}, .override = folder.Path()}};
  WriteBlocks blocks;
  modAPI_INI ini{files, folders, blocks};
  FakeClock clock;
  clsFiles::Rotation rotation{0, [] { return 500; }};
  clsFiles access{files, ini, clock, rotation};
  SilentDoor door;
  modAll_MsgBox messages{door};
  Settings settings;
  modSettings store{{ini, files, folders, clock, messages, {}}, settings};
  PlainNumbers numbers;
  NoJournalArchive archive;
  NoJournalNames names;
  modJournal journal{{access, folders, blocks, clock, numbers, archive, names, [] { return 0; }}};
};

oDataCall Call(const DateTime& when, int number) {
  oDataCall call;
  call.CallDateTime = when;
  call.DataNumber("0171" + std::to_string(1000000 + number));
  call.MSN = "10069";
  call.CIP = 16;
  return call;
}

std::string FullJournal(DataRoom& room, int lines) {
  std::string text;
  for (int i = 0; i < lines; ++i) {
    text += room.journal.GetCallDataAsFileString(Call(room.clock.Now().AddSeconds(i - lines), i)) + "\r\n";
  }
  return text;
}

void SettingsLoad(benchmark::State& state) {
  DataRoom room;
  room.store.SaveSettings_Config();
  room.store.SaveSettings_Self();
  for (auto _ : state) {
    modAPI_INI fresh(room.files, room.folders, room.blocks);
    modSettings store({fresh, room.files, room.folders, room.clock, room.messages, {}}, room.settings);
    store.LoadSetting();
  }
  state.counters["keys"] = static_cast<double>(SettingsTable().size());
}
BENCHMARK(SettingsLoad)->Unit(benchmark::kMicrosecond);

void AppendToJournal(benchmark::State& state) {
  DataRoom room;
  WriteFile(room.journal.JournalPath(), FullJournal(room, static_cast<int>(state.range(0))));
  const std::string line = room.journal.GetCallDataAsFileString(Call(room.clock.Now(), 1));
  for (auto _ : state) {
    room.journal.WriteCallDataToJournalFile(line);
  }
}
BENCHMARK(AppendToJournal)->Arg(10)->Arg(24000)->Iterations(900)->Unit(benchmark::kMicrosecond);

void EnterPeriodIntoFullJournal(benchmark::State& state) {
  DataRoom room;
  WriteFile(room.journal.JournalPath(), FullJournal(room, 25000));
  oDataCall call = Call(room.clock.Now(), 24990);
  for (auto _ : state) {
    ++call.AVMCallperiod;
    room.journal.SetCallPeriodInJournalFile(call);
  }
}
BENCHMARK(EnterPeriodIntoFullJournal)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorlix

// The files of the data room at their full size: settings, and a journal of 25,000 lines.
#ifdef VORLIX_SQLITE
#include <sqlite3.h>
#endif

#include <stdexcept>

#include <benchmark/benchmark.h>

#include "app/RunningVorlix.h"
#include "core/null_ports.h"
#include "data/JournalLookup.h"
#include "data/journal_line.h"
#include "data/modJournal.h"
#include "data/modSettings.h"
#include "fakes/BookOfNames.h"
#include "fakes/FakeClock.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/PosixFileStore.h"

namespace vorlix {
namespace {

class SilentDoor : public MsgBoxDoor {
 public:
  MsgBoxAnswer Show(std::string_view, int, std::string_view, bool) override { return MsgBoxAnswer::kOk; }
};

// The data room on a folder of the disk.
struct DataRoom {
  TemporaryFolder folder;
  PosixFileStore files;
  Folders folders{files, {.programFolder = "/nowhere", .dataHome = {}, .home = {}, .chosenFolder = folder.Path()}};
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

constexpr int kNumbers = 300;

// A full journal of a few hundred callers.
std::string JournalOfRegulars(DataRoom& room) {
  std::string text;
  for (int i = 0; i < modJournal::kMostLines; ++i) {
    const oDataCall call = Call(room.clock.Now().AddSeconds(600LL * (i - modJournal::kMostLines)), i * 7 % kNumbers);
    text += room.journal.GetCallDataAsFileString(call) + "\r\n";
  }
  return text;
}

void LoadFullJournal(benchmark::State& state) {
  DataRoom room;
  WriteFile(room.journal.JournalPath(), JournalOfRegulars(room));
  JournalCache cache;
  JournalFlags flags;
  BookOfNames book(cache, flags);
  for (int i = 0; i < kNumbers; ++i) {
    const std::string number = Call({}, i).DataNumber();
    book.names[number] = "Teilnehmer " + number;
  }
  CountingNumbers numbers;
  JournalLookup names(book, cache, flags);
  modJournal journal({room.access, room.folders, room.blocks, room.clock, numbers, room.archive, names, {}});
  for (auto _ : state) {
    benchmark::DoNotOptimize(journal.ReadJournal(room.journal.JournalPath(), false));
  }
  state.counters["lines"] = modJournal::kMostLines;
}
BENCHMARK(LoadFullJournal)->Unit(benchmark::kMillisecond);

#ifdef VORLIX_SQLITE
void Check(int code, int wanted = SQLITE_OK) {
  if (code != wanted) throw std::runtime_error(sqlite3_errstr(code));
}

// The yardstick for a load: the same lines as rows of a table, without names or analysis.
void ImportFullJournalIntoSQLite(benchmark::State& state) {
  DataRoom room;
  WriteFile(room.journal.JournalPath(), JournalOfRegulars(room));
  for (auto _ : state) {
    std::string text;
    if (!room.files.Read(room.journal.JournalPath(), text)) throw std::runtime_error("no journal");
    sqlite3* base = nullptr;
    Check(sqlite3_open(":memory:", &base));
    Check(sqlite3_exec(base, "CREATE TABLE calls(a,b,c,d,e INT,f INT,g INT,h,i INT,j INT); BEGIN", nullptr, nullptr,
                       nullptr));
    sqlite3_stmt* insert = nullptr;
    Check(sqlite3_prepare_v2(base, "INSERT INTO calls VALUES(?,?,?,?,?,?,?,?,?,?)", -1, &insert, nullptr));
    for (const std::string_view line : JournalLines(text)) {
      const JournalFields fields(line);
      for (std::size_t i = 0; i < fields.count; ++i) {
        Check(sqlite3_bind_text(insert, static_cast<int>(i) + 1, fields.text[i].data(),
                                static_cast<int>(fields.text[i].size()), SQLITE_STATIC));
      }
      Check(sqlite3_step(insert), SQLITE_DONE);
      Check(sqlite3_reset(insert));
    }
    Check(sqlite3_exec(base, "COMMIT", nullptr, nullptr, nullptr));
    Check(sqlite3_finalize(insert));
    Check(sqlite3_close(base));
  }
  state.counters["lines"] = modJournal::kMostLines;
}
BENCHMARK(ImportFullJournalIntoSQLite)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace vorlix

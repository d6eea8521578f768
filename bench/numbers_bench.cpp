// A hundred thousand numbers as a line delivers them, brought into normal form, taken apart and named by the tables as
// shipped; beside it the same numbers through libphonenumber, where that is found: parsed, described in German and
// formatted.
#include <random>

#include <benchmark/benchmark.h>

#include "app/RunningVorlix.h"
#include "core/null_ports.h"
#include "data/modNumbers.h"
#include "fakes/FakeClock.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/PosixFileStore.h"
#ifdef VORLIX_PHONENUMBER
#include <phonenumbers/geocoding/phonenumber_offline_geocoder.h>
#include <phonenumbers/phonenumberutil.h>
#endif

namespace vorlix {
namespace {

constexpr int kRouter = 16;

class SilentDoor : public MsgBoxDoor {
 public:
  MsgBoxAnswer Show(std::string_view, int, std::string_view, bool) override { return MsgBoxAnswer::kOk; }
};

// While it runs nothing is kept.
struct Simulation : NoSimulationWindow {
  bool open = false;
  bool IsOpen() override { return open; }
};

// The analysis over the shipped tables, with an empty data folder.
struct NumberRoom {
  NumberRoom() {
    settings.General.myVWL = "49";
    settings.General.myVWO = "30";
    numbers.loadOVW("49");
    numbers.loadLVW();
  }

  TemporaryFolder folder;
  PosixFileStore files;
  Folders folders{files, {.programFolder = VORLIX_BIN, .dataHome = {}, .home = {}, .chosenFolder = folder.Path()}};
  WriteBlocks blocks;
  modAPI_INI ini{files, folders, blocks};
  FakeClock clock;
  clsFiles::Rotation rotation;
  clsFiles access{files, ini, clock, rotation};
  SilentDoor door;
  modAll_MsgBox messages{door};
  Settings settings;
  NoOwnNumbers ownNumbers;
  Simulation simulation;
  JournalCache journal;
  JournalFlags flags;
  modNumbers numbers{{access, folders, ini, settings, ownNumbers, simulation, messages, journal, flags}};
};

// What stands before the subscriber, by kind of number.
const std::vector<std::string> kNational = {"030", "040", "089", "0221", "0621", "05121", "07544", "033205", "03943"};
const std::vector<std::string> kMobile = {"0151", "0160", "0171", "0176"};
const std::vector<std::string> kForeign = {"00431", "0041", "00331", "0044", "0039", "001212", "0031", "0048", "+4822"};
const std::vector<std::string> kUnknown = {"00999", "0199", "00"};
const std::vector<std::string> kLocal = {"", "49"};

std::vector<std::string> Numbers(const std::vector<std::vector<std::string>>& kinds) {
  std::mt19937 random(1);
  std::vector<std::string> numbers;
  for (int i = 0; i < 100'000; ++i) {
    const auto& heads = kinds[static_cast<std::size_t>(i) % kinds.size()];
    numbers.push_back(heads[random() % heads.size()] + std::to_string(2'000'000 + 7 * i));
  }
  return numbers;
}

std::vector<std::string> Mixed() {
  return Numbers({kNational, kMobile, kNational, kForeign, kNational, kMobile, kNational, kUnknown, kNational, kLocal});
}

enum Buffer : int { kOff, kFilling, kFull };

void AnalyseAll(benchmark::State& state, const std::vector<std::string>& raw) {
  NumberRoom room;
  const auto buffer = static_cast<Buffer>(state.range(0));
  room.simulation.open = buffer == kOff;
  std::size_t found = 0;
  for (auto _ : state) {
    state.PauseTiming();
    if (buffer == kFilling) room.numbers.SpeedBuffer_OVW_Clear();
    found = 0;
    state.ResumeTiming();
    for (const std::string& number : raw) {
      const NumberTexts texts = room.numbers.GetOVW(room.numbers.fVW(kRouter, number));
      found += texts.VW_Only.empty() ? 0 : 1;
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(raw.size()));
  state.counters["found"] = static_cast<double>(found);
}

// Speed buffer off, being filled, or full after the first round.
void AnalyseMixed(benchmark::State& state) {
  AnalyseAll(state, Mixed());
}
BENCHMARK(AnalyseMixed)->ArgName("buffer")->Arg(kOff)->Arg(kFilling)->Arg(kFull)->Unit(benchmark::kMillisecond);

void AnalyseNational(benchmark::State& state) {
  AnalyseAll(state, Numbers({kNational}));
}
BENCHMARK(AnalyseNational)->ArgName("buffer")->Arg(kOff)->Arg(kFilling)->Arg(kFull)->Unit(benchmark::kMillisecond);

#ifdef VORLIX_PHONENUMBER
void AnalyseAllByLibphonenumber(benchmark::State& state, const std::vector<std::string>& raw) {
  using namespace i18n::phonenumbers;
  const PhoneNumberUtil& util = *PhoneNumberUtil::GetInstance();
  const PhoneNumberOfflineGeocoder geocoder;
  const icu::Locale german("de");
  std::size_t found = 0;
  for (auto _ : state) {
    found = 0;
    for (const std::string& number : raw) {
      PhoneNumber parsed;
      std::string formatted;
      if (util.Parse(number, "DE", &parsed) != PhoneNumberUtil::NO_PARSING_ERROR) continue;
      found += geocoder.GetDescriptionForNumber(parsed, german).empty() ? 0 : 1;
      util.Format(parsed, PhoneNumberUtil::INTERNATIONAL, &formatted);
      benchmark::DoNotOptimize(formatted);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(raw.size()));
  state.counters["found"] = static_cast<double>(found);
}

void MixedByLibphonenumber(benchmark::State& state) {
  AnalyseAllByLibphonenumber(state, Mixed());
}
BENCHMARK(MixedByLibphonenumber)->Unit(benchmark::kMillisecond);

void NationalByLibphonenumber(benchmark::State& state) {
  AnalyseAllByLibphonenumber(state, Numbers({kNational}));
}
BENCHMARK(NationalByLibphonenumber)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace vorlix

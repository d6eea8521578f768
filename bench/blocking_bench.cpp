// The verdict for one call against a blacklist of 5,000 entries of all three kinds: by the index, and by the plain loop
// over the list that says the same. The call matches nothing, so the whole list is asked; and once its last entry.
#include <algorithm>
#include <random>

#include <benchmark/benchmark.h>

#include "core/null_ports.h"
#include "fakes/DataRoom.h"
#include "reactions/modFunction_Blocking.h"

namespace vorlix {
namespace {

constexpr std::size_t kEntries = 5000;
constexpr const char* kFreeNumber = "00498999123456";
constexpr const char* kListedNumber = "09005551234";

std::vector<BlacklistItem> FullList() {
  std::mt19937 random(4711);
  const auto digits = [&random](std::size_t fewest, std::size_t most) {
    std::string text(fewest + random() % (most - fewest + 1), '0');
    for (char& digit : text)
      digit = static_cast<char>('1' + random() % 9);
    return text;
  };
  std::vector<BlacklistItem> items(kEntries);
  for (std::size_t i = 0; i < kEntries; ++i) {
    items[i].Number = i % 3 == 0   ? "0" + digits(4, 12)
                      : i % 3 == 1 ? "*" + digits(5, 9)
                                   : std::string(1 + random() % 4, '?') + digits(5, 8);
    if (random() % 4 == 0) items[i].MSN = digits(4, 6);
  }
  items.back() = {{}, "0900555", "last"};
  return items;
}

// The list as a person would ask it.
const BlacklistItem* Walk(const std::vector<BlacklistItem>& items, const std::string& number, const std::string& MSN) {
  for (const BlacklistItem& item : items) {
    const std::string& entry = item.Number;
    if (entry.empty() || (!item.MSN.empty() && item.MSN.find(MSN) == std::string::npos)) continue;
    if (entry[0] == '*' && !number.empty() && number.find(entry.substr(1)) != std::string::npos) return &item;
    if (entry[0] == '?') {
      const auto count = static_cast<std::size_t>(std::count(entry.begin(), entry.end(), '?'));
      if (count <= number.size() && number.find(entry.substr(count), count - 1) == count) return &item;
    }
    if (number.compare(0, entry.size(), entry) == 0) return &item;
  }
  return nullptr;
}

struct BlockingRoom : DataRoom {
  BlockingRoom() { list.Replace(FullList()); }
  Blacklist list{{files, folders, messages}};
  NoSchedules schedules;
  modFunction_Blocking blocking{list, schedules};
};

void Verdict(benchmark::State& state, const char* number) {
  BlockingRoom room;
  oDataCall call;
  call.DataNumber(number);
  call.MSN = "10069";
  for (auto unused : state) {
    call.Blocked = false;
    room.blocking.FuncBlocking_GetStatus(call);
    benchmark::DoNotOptimize(call.Blocked);
  }
  if (call.Blocked != (Walk(room.list.Items(), number, call.MSN) != nullptr)) state.SkipWithError("wrong verdict");
}
BENCHMARK_CAPTURE(Verdict, OfAFreeCall, kFreeNumber);
BENCHMARK_CAPTURE(Verdict, OfAListedCall, kListedNumber);

void PlainLoop(benchmark::State& state, const char* number) {
  BlockingRoom room;
  const std::string MSN = "10069";
  for (auto unused : state)
    benchmark::DoNotOptimize(Walk(room.list.Items(), number, MSN));
}
BENCHMARK_CAPTURE(PlainLoop, OverAFreeCall, kFreeNumber);
BENCHMARK_CAPTURE(PlainLoop, OverAListedCall, kListedNumber);

// Once for each change of the list.
void MakeIndex(benchmark::State& state) {
  const std::vector<BlacklistItem> items = FullList();
  for (auto unused : state)
    benchmark::DoNotOptimize(BlacklistIndex(items).Find(kFreeNumber, "10069"));
}
BENCHMARK(MakeIndex)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vorlix

// The container at the size of a full journal.
#include <benchmark/benchmark.h>

#include "core/oDataCall.h"
#include "services/clsCollection.h"

namespace vorlix {
namespace {

constexpr int kRecords = 25000;

std::vector<clsCollection::Object> MakeRecords() {
  std::vector<clsCollection::Object> records;
  for (int i = 0; i < kRecords; ++i) {
    auto call = std::make_shared<oDataCall>();
    call->Key = std::to_string(i * 7919) + "ID";
    records.push_back(std::move(call));
  }
  return records;
}

clsCollection Filled(const std::vector<clsCollection::Object>& records) {
  clsCollection collection;
  for (const auto& record : records) {
    collection.Add(record);
  }
  return collection;
}

void AddAll(benchmark::State& state) {
  const auto records = MakeRecords();
  for (auto _ : state) {
    benchmark::DoNotOptimize(Filled(records).Count());
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(AddAll)->Unit(benchmark::kMillisecond);

void FindEachByKey(benchmark::State& state) {
  const auto records = MakeRecords();
  const clsCollection collection = Filled(records);
  for (auto _ : state) {
    for (const auto& record : records) {
      benchmark::DoNotOptimize(collection.ItemByKey(record->Key));
    }
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(FindEachByKey)->Unit(benchmark::kMillisecond);

void ReadEachByIndex(benchmark::State& state) {
  const clsCollection collection = Filled(MakeRecords());
  for (auto _ : state) {
    for (std::size_t i = 1; i <= collection.Count(); ++i) {
      benchmark::DoNotOptimize(collection.GetItemByIndex(i));
    }
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(ReadEachByIndex)->Unit(benchmark::kMillisecond);

void CloneAll(benchmark::State& state) {
  const clsCollection collection = Filled(MakeRecords());
  for (auto _ : state) {
    benchmark::DoNotOptimize(collection.Clone().Count());
  }
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(CloneAll)->Unit(benchmark::kMillisecond);

void QueueAddAndReadOldest(benchmark::State& state) {
  clsCollection queue;
  for (std::size_t i = 0; i + 1 < clsCollection::kQueueFull; ++i) {
    queue.Queue_Add("a line of the trace that waits for the disk");
  }
  for (auto _ : state) {
    queue.Queue_Add("a line of the trace that waits for the disk");
    benchmark::DoNotOptimize(queue.Queue_ReadLast());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueueAddAndReadOldest);

}  // namespace
}  // namespace vorlix

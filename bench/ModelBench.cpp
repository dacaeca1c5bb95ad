// The memory and speed of an item model: a model of 100,000 items of every kind, as a plug-in
// builds it, measured by the bytes the allocator hands out for it.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <functional>
#include <string>
#include <vector>

#include "../tests/plugins/SyntheticModel.h"

namespace {

constexpr long kItems = 100'000;

std::size_t allocatedBytes() {
  return mallinfo2().uordblks;
}

void BM_BuildModel(benchmark::State& state) {
  double bytesPerItem = 0;
  long items = 0;
  for (auto _ : state) {
    const std::size_t before = allocatedBytes();
    kv::test::SyntheticModel model = kv::test::BuildSyntheticModel(kItems);
    const std::size_t after = allocatedBytes();
    items = model.items;
    // The first model pays for interning its names too; later ones find them interned.
    if (bytesPerItem == 0) bytesPerItem = double(after - before) / double(items);
    benchmark::DoNotOptimize(model.project);
  }
  state.counters["items"] = double(items);
  state.counters["bytes_per_item"] = bytesPerItem;
}
BENCHMARK(BM_BuildModel)->Unit(benchmark::kMillisecond)->Iterations(3);

// Reading members by name, as templates do, over every item of the model.
void BM_LateBoundReads(benchmark::State& state) {
  const kv::test::SyntheticModel model = kv::test::BuildSyntheticModel(kItems);
  std::vector<kv::ItemPtr> all;
  std::function<void(const kv::ItemPtr&)> collect = [&](const kv::ItemPtr& item) {
    all.push_back(item);
    item->ForEachChild([&](const kv::ItemPtr& child) {
      collect(child);
      return true;
    });
  };
  collect(model.project);
  for (auto _ : state)
    for (const auto& item : all) {
      benchmark::DoNotOptimize(item->get("Name"));
      benchmark::DoNotOptimize(kv::getOr(item, "TaggedDescription"));
    }
  state.SetItemsProcessed(state.iterations() * long(all.size()));
}
BENCHMARK(BM_LateBoundReads)->Unit(benchmark::kMillisecond);

void BM_QualifiedNameLookup(benchmark::State& state) {
  const kv::test::SyntheticModel model = kv::test::BuildSyntheticModel(kItems);
  long n = 0;
  for (auto _ : state) {
    const std::string name = "Synthetic~Widget" + std::to_string(n++ % 4000 + 1) + "~Size~Let~value";
    benchmark::DoNotOptimize(model.project->FindByQualifiedName(name));
  }
}
BENCHMARK(BM_QualifiedNameLookup);

}  // namespace

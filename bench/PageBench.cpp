// Writing the pages of a synthetic project through the standard template's item layout, as plain
// HTML, next to a baseline that writes the same files with the same bytes by plain fwrite.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "../tests/plugins/SyntheticModel.h"
#include "definitions/Configuration.h"
#include "definitions/Template.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/INamespaceProvider.h"
#include "output/PageGeneration.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"

namespace {

namespace fs = std::filesystem;

// Items of the model by definition: the root, then below a parent the children of the type the
// definition names ("KV:Component", "KV:Block", ...), as the test plug-in's provider delivers them.
class ModelProvider : public kv::Object, public kv::INamespaceProvider {
 public:
  std::shared_ptr<kv::vbProject> root;
  std::string typeName() const override { return "BenchProvider"; }
  void KVProject(const std::weak_ptr<kv::IKVProject>&) override {}
  kv::ItemCollection GetItems(const std::shared_ptr<kv::NamespaceDef>& def, const kv::ObjectPtr& parent,
                              const std::string&) override {
    auto items = std::make_shared<std::vector<kv::ObjectPtr>>();
    if (!parent) {
      items->push_back(root);
      return items;
    }
    const std::string kind = def->Name.substr(3);
    if (const auto item = std::dynamic_pointer_cast<kv::Item>(parent))
      item->ForEachChild([&](const kv::ItemPtr& child) {
        if (kv::TypeMatch(child, kind)) items->push_back(child);
        return true;
      });
    return items;
  }
  std::shared_ptr<kv::DataProvider> DataProvider() override { return nullptr; }
  kv::ObjectPtr LoadRootItem(const std::string&) override { return root; }
  kv::ObjectPtr GetItemByQualifiedName(const std::string&) override { return nullptr; }
  std::vector<std::shared_ptr<kv::NamespaceDef>> GetNamespaceDefsOfItem(const kv::ObjectPtr&,
                                                                        const kv::NamespaceDefs&) override {
    return {};
  }
  std::string GeneratorName() override { return "kv.bench"; }
  bool ItemExists(const std::string&) override { return true; }
  std::string MonikerForItem(const kv::ObjectPtr&) override { return {}; }
  std::string RelativeMoniker(const std::string& m, const std::string&) override { return m; }
  std::string AbsoluteMoniker(const std::string& m, const std::string&) override { return m; }
  std::string ContentFilterOfItem(const kv::ObjectPtr&) override { return {}; }
};

struct PlugIn : kv::IKVProjectPlugIn {
  bool SomethingToDocument() override { return true; }
};

struct Pages : kv::KVProjectEvents {
  std::vector<std::string> files;
  void ContentCreated(const std::string& file) override { files.push_back(file); }
};

std::shared_ptr<kv::NamespaceDef> def(const std::string& name) {
  auto d = std::make_shared<kv::NamespaceDef>();
  d->Name = d->DisplayName = name;
  d->Handler = "Bench.Provider";
  return d;
}

// The standard template's item layout and support files over the model's definitions.
std::shared_ptr<kv::Template> benchTemplate() {
  const auto standard = kv::ConfigurationRoot::instance().Templates().Item("Standard");
  auto t = std::make_shared<kv::Template>(*standard);
  t->NamespaceDefs = kv::NamespaceDefs();
  t->PageLayouts.Clear();
  auto root = def("KV:vbProject");
  auto component = def("KV:Component");
  for (const char* kind : {"KV:Block", "KV:EventDeclaration", "KV:Enumeration", "KV:Variable", "KV:Structure"})
    component->ChildNamespaceDefs.Add(def(kind), kind);
  root->ChildNamespaceDefs.Add(component, component->Name);
  t->NamespaceDefs.Add(root, root->Name);
  auto item = std::make_shared<kv::PageLayout>();
  item->TemplateFileName = "layouts/item.html";
  item->NamespaceList =
      "KV:vbProject,KV:Component,KV:Block,KV:EventDeclaration,KV:Enumeration,KV:Variable,KV:Structure";
  item->Keywords = {{"%%itemname%%", "K"}};
  t->PageLayouts.Add(item, "Item");
  return t;
}

std::string tempFolder(const std::string& name) {
  std::random_device rd;
  return (fs::temp_directory_path() / ("kavrel-bench-" + name + "-" + std::to_string(rd()))).string();
}

std::string readAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

long peakKilobytes() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind("VmHWM:", 0) == 0) return std::atol(line.c_str() + 6);
  return 0;
}

void BM_WritePages(benchmark::State& state) {
  setenv("KAVREL_CONFIG_DIR", KV_SOURCE_CONFIG_DIR, 1);
  kv::ConfigurationRoot::instance().Reset();
  auto provider = std::make_shared<ModelProvider>();
  kv::ClassRegistry::instance().add("Bench.Provider", [provider] { return provider; });

  const long peakBefore = peakKilobytes();
  const kv::test::SyntheticModel model = kv::test::BuildSyntheticModel(state.range(0), "Bench");
  provider->root = model.project;
  auto project = kv::KVProject::New();
  project->Silent = true;
  project->CompileHelpFile(false);
  auto docType = std::make_shared<kv::KVDocType>("kv.bench", std::make_shared<PlugIn>());
  docType->mSelectedTemplate = benchTemplate();
  project->DocTypes->Add(docType, "kv.bench");
  auto pages = std::make_shared<Pages>();
  project->Subscribe(pages);

  // Rounds alternate which side goes first, each into a fresh folder with the disk's dirty pages
  // written out before it, so that neither side pays for the other's writeback. The figures are
  // the medians.
  constexpr int kRounds = 3;
  std::vector<double> builds, baselines;
  std::vector<std::pair<std::string, std::string>> files;
  long peakAfter = 0;
  auto build = [&] {
    const std::string out = tempFolder("pages");
    project->OutputFolder(out);
    pages->files.clear();
    ::sync();
    const auto start = std::chrono::steady_clock::now();
    kv::PageGeneration(*project).Build();
    builds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    if (files.empty()) {
      peakAfter = peakKilobytes();
      for (const auto& file : pages->files) files.emplace_back(fs::path(file).filename().string(), readAll(file));
    }
    std::error_code ec;
    fs::remove_all(out, ec);
  };
  // The baseline: the same files with the same bytes, each written by one fopen, fwrite, fclose.
  auto baseline = [&] {
    const std::string copy = tempFolder("fwrite");
    fs::create_directories(copy);
    ::sync();
    const auto start = std::chrono::steady_clock::now();
    for (const auto& [name, bytes] : files) {
      std::FILE* f = std::fopen((copy + "/" + name).c_str(), "wb");
      std::fwrite(bytes.data(), 1, bytes.size(), f);
      std::fclose(f);
    }
    baselines.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    std::error_code ec;
    fs::remove_all(copy, ec);
  };
  for (auto _ : state)
    for (int round = 0; round < kRounds; ++round) {
      if (round % 2 == 0) {
        build();
        baseline();
      } else {
        baseline();
        build();
      }
    }
  auto median = [](std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
  };
  const double seconds = median(builds), fwriteSeconds = median(baselines);

  state.counters["items"] = double(model.items);
  state.counters["pages"] = double(files.size());
  state.counters["pages_per_s"] = double(files.size()) / seconds;
  state.counters["build_s"] = seconds;
  state.counters["fwrite_s"] = fwriteSeconds;
  state.counters["x_baseline"] = seconds / fwriteSeconds;
  state.counters["peak_kb_per_item"] = double(peakAfter - peakBefore) / double(model.items);

  project->Terminate();
  kv::ClassRegistry::instance().remove("Bench.Provider");
}
BENCHMARK(BM_WritePages)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace

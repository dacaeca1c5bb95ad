// Rendering speed of page layouts and text expansion, each next to a plain copy of the same
// bytes. One layout serves every item of a project, so rendering is the hot path of a build.
#include <benchmark/benchmark.h>

#include <string>

#include "kavrel/DataProvider.h"
#include "kavrel/ParserElement.h"
#include "template/ParserTemplate.h"
#include "template/TextExpansion.h"

namespace {

// Answers every tag and property with a short fixed text.
class TrivialProvider : public kv::DataProvider {
 public:
  std::string ProvideData(kv::ParserElement&, std::shared_ptr<kv::FileSystem>&) override { return "Value"; }
  std::string GetProperty(std::string_view) override { return "Property"; }
  std::string ParseForProperties(std::string_view text) override { return kv::ParseForProviderProperties(text, *this); }
  void Initialise(const std::shared_ptr<kv::ParserTemplate>&) override {}
  void Terminate() override {}
  void CurrentRootItem(kv::ObjectPtr) override {}
  kv::ObjectPtr CurrentRootItem() const override { return {}; }
  void CurrentParentItem(kv::ObjectPtr) override {}
  kv::ObjectPtr CurrentParentItem() const override { return {}; }
  void CurrentItemType(std::string_view) override {}
  std::string CurrentItemType() const override { return {}; }
  void CurrentItem(kv::ObjectPtr) override {}
  kv::ObjectPtr CurrentItem() const override { return {}; }
  void NamespaceDef(std::shared_ptr<kv::NamespaceDef>) override {}
  std::shared_ptr<kv::NamespaceDef> NamespaceDef() const override { return {}; }
  void SetCurrentItem(const std::shared_ptr<kv::NamespaceDef>&, const kv::ObjectPtr&, std::string_view,
                      const kv::ObjectPtr&) override {}
  std::shared_ptr<kv::DataProvider> Clone() override { return std::make_shared<TrivialProvider>(); }
};

// A member page: head, banner, a members table and a footer; about 20 KB with 200 tags.
std::string pageLayout() {
  std::string s =
      "<!DOCTYPE html>\n<html>\n<head>\n%%metacharset%%\n<title>%%itemname%% - %%projectgrouptitle%%</title>\n"
      "<link rel=\"stylesheet\" href=\"styles/presentation.css\" />\n"
      "<!--KVMETADATA start--><meta name=\"id\" content=\"%%item_qualified_name%%\" /><!--KVMETADATA end-->\n"
      "</head>\n<body>\n<kv:data type=\"scrap\" name=\"banner\" />\n<div id=\"content\">\n";
  for (int i = 0; i < 196; ++i) {
    s += "<tr><td class=\"name\"><kv:data type=\"variable\" name=\"member" + std::to_string(i) +
         "\" /></td><td>Describes member " + std::to_string(i) + ".</td></tr>\n";
  }
  s += "</div>\n<kv:data type=\"scrap\" name=\"footer\" />\n<kv:data type=\"phrase\" name=\"COPYRIGHT\" />\n"
       "<kv:data type=\"checkforfile\" filename=\"extra.css\" />\n</body>\n</html>\n";
  return s;
}

// About 1 MB of prose with 10,000 references.
std::string largeText() {
  std::string s;
  for (int i = 0; i < 10000; ++i) {
    s += "This paragraph is about %%itemname%% and goes on for a while, as a sentence in a comment does.\n";
  }
  return s;
}

void RenderPageLayout(benchmark::State& state) {
  const std::string layout = pageLayout();
  kv::ParserTemplate t;
  t.LoadText(layout);
  t.DataProvider(std::make_shared<TrivialProvider>());
  for (auto _ : state) benchmark::DoNotOptimize(t.ParseToString());
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * layout.size()));
  state.counters["layout_bytes"] = static_cast<double>(layout.size());
}
BENCHMARK(RenderPageLayout);

void LoadPageLayout(benchmark::State& state) {
  const std::string layout = pageLayout();
  for (auto _ : state) {
    kv::ParserTemplate t;
    t.LoadText(layout);
    benchmark::DoNotOptimize(t);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * layout.size()));
}
BENCHMARK(LoadPageLayout);

void CopyPageLayout(benchmark::State& state) {
  const std::string layout = pageLayout();
  for (auto _ : state) {
    std::string copy = layout;
    benchmark::DoNotOptimize(copy);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * layout.size()));
}
BENCHMARK(CopyPageLayout);

void ExpandLargeText(benchmark::State& state) {
  const std::string text = largeText();
  TrivialProvider provider;
  for (auto _ : state) benchmark::DoNotOptimize(kv::ParseForProviderProperties(text, provider));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
  state.counters["text_bytes"] = static_cast<double>(text.size());
}
BENCHMARK(ExpandLargeText);

void CopyLargeText(benchmark::State& state) {
  const std::string text = largeText();
  for (auto _ : state) {
    std::string copy = text;
    benchmark::DoNotOptimize(copy);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(CopyLargeText);

}  // namespace

// Compiles arbitrary text as a page layout and renders it with the common provider for an item of
// a synthetic model (or an example), against a project whose template has phrases, scraps, a file
// to include and an XML document. Whatever the layout says, rendering must end, and every tag
// must turn into text: a failure inside a tag is a page text, never an escaping exception.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "../tests/plugins/SyntheticModel.h"
#include "definitions/Template.h"
#include "kavrel/FileSystem.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/model/Example.h"
#include "project/KVDocType.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "template/CommonProvider.h"
#include "template/ParserTemplate.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, const std::string& text) {
  fs::create_directories(path.parent_path());
  kv::FileSystem(path.string()).WriteAll(text);
}

struct World {
  fs::path folder;
  std::shared_ptr<kv::KVProject> project;
  kv::test::SyntheticModel model;
  std::vector<kv::ObjectPtr> items;
  std::shared_ptr<kv::CommonProvider> provider;

  World() {
    char pattern[] = "/tmp/kv-tags-fuzz-XXXXXX";
    if (!mkdtemp(pattern)) std::abort();
    folder = pattern;
    write(folder / "template/Phrases/English.xml",
          "<Phrases Language=\"English\"><Phrase Key=\"TITLE\">Title of %%itemname%%</Phrase></Phrases>");
    write(folder / "template/HTMLScraps/box.html", "[%%itemname%% $$TITLE$$]");
    write(folder / "template/HTMLScraps/_XML_STATIC.html", "<x title=\"%%Caption%%\">%%XML%%</x>");
    write(folder / "template/HTMLScraps/_DESIGN_LIST.html", "[%%itemtype%%|%%tagidentifier%%]");
    write(folder / "template/HTMLScraps/_DESIGN_SUPPORT.html", "<script/>");
    write(folder / "template/HTMLScraps/_DESIGN_BANNER.html", "<b>%%bannercontents%%</b>");
    write(folder / "template/part.htm", "part %%itemname%% 5/%");
    write(folder / "project/data.xml", "<a b=\"1\"><c>%%x%%</c></a>");
    write(folder / "out/page.htm", "page");

    project = kv::KVProject::New();
    project->KVProjectFileName = std::make_shared<kv::FileSystem>((folder / "project/docs.kvp").string());
    project->OutputFolder((folder / "out").string() + "/");
    auto tmpl = std::make_shared<kv::Template>();
    tmpl->Name = "Fuzz";
    tmpl->Folder = (folder / "template").string() + "/";
    auto docType = std::make_shared<kv::KVDocType>("kv.fuzz", std::make_shared<kv::IKVProjectPlugIn>());
    docType->mSelectedTemplate = tmpl;
    project->DocTypes->Add(docType);
    project->CurrentDocType(docType);

    model = kv::test::BuildSyntheticModel(20);
    items.push_back(model.project);
    model.project->ForEachChild([&](const kv::ItemPtr& child) {
      items.push_back(child);
      child->ForEachChild([&](const kv::ItemPtr& member) {
        items.push_back(member);
        return true;
      });
      return true;
    });
    auto example = std::make_shared<kv::Example>();
    example->Code = "int x = 50/% 3; // %%itemname%%";
    example->Language = "cpp";
    example->Title = "Sample";
    items.push_back(example);

    provider = std::make_shared<kv::CommonProvider>();
    provider->KVProject(project);
  }
  ~World() {
    project->Terminate();
    std::error_code ec;
    fs::remove_all(folder, ec);
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  if (size < 1) return 0;
  const kv::ObjectPtr& item = world.items[data[0] % world.items.size()];
  world.provider->CurrentRootItem(world.model.project);
  world.provider->SetCurrentItem(nullptr, item, item->typeName(), world.model.project);
  world.provider->ForEdit = (data[0] & 0x80) != 0;
  world.provider->DesignBanner = (data[0] & 0x40) != 0 ? "Draft" : "";

  kv::ParserTemplate layout;
  layout.LoadText(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
  layout.DataProvider(world.provider);
  layout.ParseToString();
  return 0;
}

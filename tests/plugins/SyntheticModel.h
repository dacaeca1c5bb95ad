// A model of any size with items of every kind, made through the typed interface a doc-type
// plug-in uses. The test plug-in delivers it, and the benchmarks measure it.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Model.h"

namespace kv::test {

struct SyntheticModel {
  std::shared_ptr<vbProject> project;
  long items = 0;  // items made, the project included
};

// The item and everything below it.
inline long CountItems(const Item& item) {
  long count = 1;
  item.ForEachChild([&](const ItemPtr& child) {
    count += CountItems(*child);
    return true;
  });
  return count;
}

// Components of a fixed shape until at least `items` items exist. Every documented item has a
// summary comment and the description made from it; parameters have their own comments.
inline SyntheticModel BuildSyntheticModel(long items, const std::string& name = "Synthetic") {
  SyntheticModel m;
  m.project = std::make_shared<vbProject>(name);
  m.project->IsDotNet(true);
  m.items = 1;
  auto summary = [&](DocumentedItem& item, const std::string& text) {
    item.TaggedComments().Add(std::make_shared<TaggedComment>("##SUMMARY", text), "##SUMMARY");
    item.TaggedDescription(text);
  };
  auto paramComment = [](Item& item, const std::string& text) {
    auto c = std::make_shared<TaggedComment>("##PARAM", text, item.Name());
    item.TaggedComments().Add(c, "##PARAM");
  };
  for (long n = 1; m.items < items; ++n) {
    const std::string id = std::to_string(n);
    auto c = m.project->AddComponent("Widget" + id, n % 5 == 0 ? "Module" : "Class");
    c->QualifiedPrefix("Synthetic.Widgets");
    c->SourceFileName("Widget" + id + ".cls");
    summary(*c, "A widget that draws shape number " + id + " on its surface.");

    auto run = c->AddBlock("Run", BlockType::Function);
    run->Scope("PUBLIC");
    run->ReturnType("Boolean");
    summary(*run, "Runs widget " + id + " the given number of times and says whether it finished.");
    paramComment(*run->AddParameter("times", "Integer"), "How many times to run widget " + id + ".");
    paramComment(*run->AddParameter("options", "RunOptions"), "How to run it.");
    run->AddGenericArgument("T")->Constraints("class");

    auto reset = c->AddBlock("Reset", BlockType::Sub);
    reset->Scope("PUBLIC");
    summary(*reset, "Puts widget " + id + " back as it was made.");

    auto get = c->AddBlock("Size", BlockType::PropertyGet);
    get->Qualifier("Get");
    get->ReturnType("Long");
    summary(*get, "The size of widget " + id + " in pixels.");
    auto let = c->AddBlock("Size", BlockType::PropertyLet);
    let->Qualifier("Let");
    let->AddParameter("value", "Long");
    summary(*c->PropertyGroup("Size"), "The size of widget " + id + ".");

    auto changed = c->AddEvent("Changed");
    changed->AddParameter("sender", "Object");
    summary(*changed, "Raised when widget " + id + " changes.");

    auto beep = c->AddDeclaration("MessageBeep");
    beep->LibraryName("user32");
    beep->AddParameter("uType", "Long");

    auto colour = c->AddEnumeration("Colour");
    summary(*colour, "The colours widget " + id + " draws in.");
    for (const char* member : {"Red", "Green", "Blue"}) colour->AddMember(member)->Value(member);

    auto point = c->AddStructure("Point");
    point->AddMember("X")->TypeText("Double");
    point->AddMember("Y")->TypeText("Double");
    auto span = c->AddUDT("Span");
    span->AddMember("Length")->TypeText("Long");

    c->AddVariable("mCount", "Long")->Scope("PRIVATE");
    auto name = c->AddVariable("Caption", "String");
    name->Scope("PUBLIC");
    summary(*name, "The caption of widget " + id + ".");

    m.items += CountItems(*c);
  }
  return m;
}

}  // namespace kv::test

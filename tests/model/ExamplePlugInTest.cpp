// The example plug-in of the plug-in guide, loaded as Kavrel loads an installed plug-in.
#include <gtest/gtest.h>

#include <filesystem>

#include "kavrel/ClassRegistry.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Model.h"
#include "project/PlugInLoader.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

TEST(ExamplePlugIn, ReadsAnOutlineIntoAModel) {
  test::TempFolder folder;
  std::filesystem::create_directories(folder.path("plugins"));
  std::filesystem::copy_file(KV_EXAMPLE_PLUGIN, folder.path("plugins/outline.so"));
  LoadPlugInLibraries(folder.path("plugins"));
  const std::string outline = folder.path("widget.outline");
  test::writeFile(outline,
                  "component Widget Class -- Draws a widget.\n"
                  "function Run Boolean -- Runs the widget.\n"
                  "param times Integer -- How many times.\n"
                  "get Size Long\n"
                  "let Size\n"
                  "param value Long\n"
                  "enum Colour\n"
                  "member Red 1\n");

  auto provider = std::dynamic_pointer_cast<INamespaceProvider>(ClassRegistry::instance().create("Outline.Provider"));
  ASSERT_TRUE(provider);
  const ObjectPtr root = provider->LoadRootItem(outline);
  ASSERT_TRUE(TypeMatch(root, "vbProject"));
  const auto components = *provider->GetItems(nullptr, root, {});
  ASSERT_EQ(components.size(), 1u);
  EXPECT_TRUE(TypeMatch(components[0], "Component"));  // a kind of the plug-in's own, by type name
  EXPECT_EQ(components[0]->get("Line").toInteger(), 1);
  EXPECT_EQ(components[0]->get("TaggedDescription").toString(), "Draws a widget.");

  const std::string prefix = outline + "~Widget~";
  EXPECT_EQ(provider->GetItemByQualifiedName(prefix + "Run~times")->get("TypeText").toString(), "Integer");
  EXPECT_TRUE(TypeMatch(provider->GetItemByQualifiedName(prefix + "Size"), "PropertyGroup"));
  EXPECT_EQ(provider->GetItemByQualifiedName(prefix + "Size~let~value")->get("Name").toString(), "value");
  EXPECT_EQ(provider->GetItemByQualifiedName(prefix + "Colour~Red")->get("Value").toString(), "1");
  EXPECT_EQ(provider->MonikerForItem(provider->GetItemByQualifiedName(prefix + "Run")), outline);
}

}  // namespace
}  // namespace kv

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "host/TreeView.h"
#include "host/modMain.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/FileSystem.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

using namespace std::chrono_literals;

TEST(ModMain, ElapsedTimeInSecondsThenMinutes) {
  const DateTime start = std::chrono::system_clock::now();
  EXPECT_EQ(ElapsedTime(start, start), "0 seconds");
  EXPECT_EQ(ElapsedTime(start, start + 59s), "59 seconds");
  EXPECT_EQ(ElapsedTime(start, start + 60s), "1 minutes");
  EXPECT_EQ(ElapsedTime(start, start + 61s), "1 minutes 1 seconds");
  EXPECT_EQ(ElapsedTime(start, start + 3600s), "60 minutes");
  EXPECT_EQ(ElapsedTime(start, start + 3725s), "62 minutes 5 seconds");
}

TEST(ModMain, ColorToWebHexWritesSmallGreensInDecimal) {
  EXPECT_EQ(ColorToWebHex(0xFFFFFF), "#FFFFFF");
  EXPECT_EQ(ColorToWebHex(0x0000FF), "#FF0000");   // red in the lowest byte
  EXPECT_EQ(ColorToWebHex(0xAB0000), "#0000AB");   // blue in the third
  EXPECT_EQ(ColorToWebHex(0x000B00), "#0001100");  // green 11: eight characters
  EXPECT_EQ(ColorToWebHex(0x0A0F05), "#050150A");  // green 15
  EXPECT_EQ(ColorToWebHex(0x000900), "#000900");
  EXPECT_EQ(ColorToWebHex(0x10101010), "#101010");  // higher bits dropped
  EXPECT_EQ(ColorToWebHex(-1), "#FFFFFF");
}

TEST(ModMain, ReplaceSystemPathOnlyReplacesTheExactMarker) {
  EXPECT_EQ(ReplaceSystemPath("%SYS32%/a.so;%SYS32%/b.so"), "/usr/lib/a.so;/usr/lib/b.so");
  EXPECT_EQ(ReplaceSystemPath("%sys32%/a.so"), "%sys32%/a.so");
  EXPECT_EQ(ReplaceSystemPath("/opt/x"), "/opt/x");
}

TEST(ModMain, DelTree32DeletesAFolderWithEverythingInIt) {
  test::TempFolder folder;
  const auto tree = folder.root() / "out";
  std::filesystem::create_directories(tree / "sub" / ".hidden");
  std::ofstream(tree / "sub" / "page.html") << "x";
  std::ofstream(tree / ".dot") << "x";
  std::filesystem::permissions(tree / ".dot", std::filesystem::perms::owner_read);  // read-only file
  test::ScopedRecordingHost host;
  EXPECT_TRUE(DelTree32(tree.string()));
  EXPECT_FALSE(std::filesystem::exists(tree));
  EXPECT_TRUE(DelTree32(tree.string()));  // already gone: nothing to do
  EXPECT_TRUE(host.messages().empty());
}

TEST(ModMain, DelTree32TellsTheUserWhenItFails) {
  test::TempFolder folder;
  std::ofstream(folder.path("file")) << "x";
  const std::string path = folder.path("file/folder");  // a parent that is a file fails even for root
  test::ScopedRecordingHost host;
  EXPECT_FALSE(DelTree32(path));
  ASSERT_EQ(host.messages().size(), 1u);
  const auto& m = host.messages()[0];
  EXPECT_EQ(m.title, "Could not delete");
  EXPECT_EQ(m.text, "Could not delete one of more files in the directory [" + path + "]. The error description is [" +
                        std::error_code(ENOTDIR, std::generic_category()).message() +
                        "]\r\n\r\nPlease check that the files in this directory are not read-only and that you have "
                        "permission to delete them.");
}

TEST(ModMain, RelativeFileNamesReachOneFolderUpAtMost) {
  test::TempFolder folder;
  auto path = [&](const std::string& relative) { return folder.path(relative); };
  FileSystem project(path("Größe/proj/site.kvp"));
  auto relative = [&](const std::string& name) {
    FileSystem file(path(name));
    std::string result = ToRelativeFileName(file, project);
    EXPECT_EQ(file.RelativeName(), file.FileName()) << "base left set for " << name;
    return result;
  };
  EXPECT_EQ(relative("Größe/proj/site.xml"), "site.xml");
  EXPECT_EQ(relative("Größe/proj/sub/y.xml"), "sub/y.xml");
  EXPECT_EQ(relative("Größe/sibling/x.xml"), "../sibling/x.xml");
  EXPECT_EQ(relative("Größe/top.xml"), "../top.xml");
  EXPECT_EQ(relative("up.xml"), path("up.xml"));  // two levels up: the full path
  EXPECT_EQ(relative("other/deep/z.xml"), path("other/deep/z.xml"));

  EXPECT_EQ(FromRelativeFileNAme("../sibling/x.xml", project), path("Größe/sibling/x.xml"));
  EXPECT_EQ(FromRelativeFileNAme("sub\\y.xml", project), path("Größe/proj/sub/y.xml"));
  EXPECT_EQ(FromRelativeFileNAme("/abs/a.xml", project), "/abs/a.xml");
  FileSystem absolute(path("a/b.xml"));
  EXPECT_EQ(FromRelativeFileNAme(absolute, project), path("a/b.xml"));
  EXPECT_EQ(absolute.RelativeName(), path("a/b.xml"));  // base cleared
}

TEST(ModMain, RegularExpressionsAreChecked) {
  EXPECT_TRUE(AreRegularExpressionsAvailable());
  EXPECT_TRUE(IsValidRegularExpression("^test\\s+(\\w+)$"));
  EXPECT_TRUE(IsValidRegularExpression("nomatch"));
  EXPECT_TRUE(IsValidRegularExpression("(t)est", "$1x"));
  EXPECT_TRUE(IsValidRegularExpression("s", std::string(400, 'x')));  // result longer than a first guess
  EXPECT_FALSE(IsValidRegularExpression("(unclosed"));
  EXPECT_FALSE(IsValidRegularExpression("[a-"));
  EXPECT_FALSE(IsValidRegularExpression("test", "${1"));
  EXPECT_FALSE(IsValidRegularExpression("test", "$5"));  // no such group
}

TEST(ModMain, TreePathsSaveAndRestoreTheSelection) {
  MemoryTreeView tree;
  tree.Add("", "root");
  tree.Add("root", "Größe");
  tree.Add("Größe", "leaf");
  tree.Add("root", "other");
  EXPECT_EQ(GetTreePath(tree), "");

  tree.Node("leaf")->Selected(true);
  EXPECT_EQ(GetTreePath(tree), "root|Größe|leaf");

  MemoryTreeView copy;
  copy.Add("", "root");
  copy.Add("root", "Größe");
  copy.Add("root", "other");
  SetTreePath(copy, "root|Größe|leaf|more");  // stops at the first missing node
  EXPECT_TRUE(copy.Node("root")->Expanded());
  EXPECT_TRUE(copy.Node("Größe")->Expanded());
  EXPECT_TRUE(copy.Node("Größe")->Selected());
  EXPECT_FALSE(copy.Node("other")->Expanded());

  SetTreePath(copy, "");
  EXPECT_TRUE(copy.Node("Größe")->Selected());
  SetTreePath(copy, "missing|root");
  EXPECT_TRUE(copy.Node("Größe")->Selected());
}

TEST(ModMain, SiblingProductProbesAreCached) {
  auto& registry = ClassRegistry::instance();
  auto enums = [] { return std::make_shared<DynamicObject>("Enums"); };
  ResetLumideskProbes();
  EXPECT_FALSE(IsLumideskInstalled());

  registry.add("LDObjects2.Enums", enums);
  EXPECT_FALSE(IsLumidesk2Installed());  // the first answer stays
  ResetLumideskProbes();
  EXPECT_TRUE(IsLumidesk2Installed());
  EXPECT_FALSE(IsLumidesk3Installed());
  EXPECT_FALSE(IsLumideskLiteInstalled());
  EXPECT_TRUE(IsLumideskInstalled());

  registry.remove("LDObjects2.Enums");
  EXPECT_TRUE(IsLumidesk2Installed());
  ResetLumideskProbes();
  EXPECT_FALSE(IsLumidesk2Installed());
}

TEST(ModMain, GetLDProjectTakesTheNewestVersionAndLoadsIt) {
  auto& registry = ClassRegistry::instance();
  EXPECT_EQ(GetLDProject("/p.ldp"), nullptr);

  std::vector<std::string> loaded;
  auto project = [&](std::string name) {
    return [&, name] {
      auto p = std::make_shared<DynamicObject>(name);
      p->method("LoadFromFile", [&](const Arguments& a) {
        loaded.push_back(a.at(0).toString());
        return Variant();
      });
      return p;
    };
  };
  registry.add("LDLiteObjects.LDProject", project("Lite"));
  registry.add("LDObjects2.LDProject", project("Two"));
  ObjectPtr p = GetLDProject("/p.ldp");
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->typeName(), "Two");
  EXPECT_EQ(loaded, std::vector<std::string>{"/p.ldp"});
  registry.remove("LDLiteObjects.LDProject");
  registry.remove("LDObjects2.LDProject");
}

TEST(ModMain, KnowsVBNETExtensionsAndStripsGenericSuffixes) {
  EXPECT_TRUE(IsVBNETExtension("vb"));
  EXPECT_TRUE(IsVBNETExtension(".VB"));
  EXPECT_TRUE(IsVBNETExtension("vbproj"));
  EXPECT_FALSE(IsVBNETExtension("vbp"));
  EXPECT_FALSE(IsVBNETExtension("cs"));
  EXPECT_EQ(RemoveGenericSuffix("List`1"), "List");
  EXPECT_EQ(RemoveGenericSuffix("Dictionary`2"), "Dictionary");
  EXPECT_EQ(RemoveGenericSuffix("Plain"), "Plain");
}

}  // namespace
}  // namespace kv

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

#include "kavrel/Failure.h"
#include "kavrel/XmlDocument.h"
#include "support/TempFolder.h"

using kv::XMLDocument;
using kv::XMLNode;

namespace {

TEST(XmlDocument, NewDocumentHasANameableRoot) {
  XMLDocument doc;
  XMLNode root = doc.RootNode();
  root.Name("KavrelProject");
  root.SetAttribute("Version", "5");
  XMLNode settings = root.AddChild("Settings");
  settings.SetAttribute("Title", R"(A & B <"C">)");
  settings.AddChild("Comment").Text("x < y & z");

  const std::string xml = doc.Xml();
  EXPECT_TRUE(xml.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<KavrelProject Version=\"5\">\n  <Settings"))
      << xml;
  EXPECT_NE(xml.find(R"(Title="A &amp; B &lt;&quot;C&quot;&gt;")"), std::string::npos) << xml;
  EXPECT_NE(xml.find("<Comment>x &lt; y &amp; z</Comment>"), std::string::npos) << xml;

  // What was written reads back the same.
  XMLDocument again;
  ASSERT_TRUE(again.LoadXML(xml)) << again.ParseError();
  EXPECT_EQ(again.RootNode().Name(), "KavrelProject");
  EXPECT_EQ(again.RootNode().ChildNodes().Item("Settings").Attributes().Item("Title").Value(), R"(A & B <"C">)");
  EXPECT_EQ(again.RootNode().ChildNodes().Item("Settings").ChildNodes().Item("Comment").Text(), "x < y & z");
}

TEST(XmlDocument, LookupByNameIgnoresCase) {
  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML(R"(<Root><DocType Name="a" OutputFolder="o"/><doctype Name="b"/><Other/></Root>)"));
  XMLNode root = doc.RootNode();

  EXPECT_EQ(root.ChildNodes().Item("DOCTYPE").Attributes().Item("name").Value(), "a");
  EXPECT_EQ(root.ChildNodes().Item("doctype").Attributes().Item("OUTPUTFOLDER").Value(), "o");
  EXPECT_TRUE(root.ChildNodes().Exists("other"));
  EXPECT_FALSE(root.ChildNodes().Exists("Missing"));

  XMLNode first = root.ChildNodes().Item("docType");
  EXPECT_TRUE(first.Attributes().Exists("NAME"));
  EXPECT_EQ(first.Attributes().ValueOr("Missing", "fallback"), "fallback");
  EXPECT_FALSE(first.Attributes().Find("Missing").has_value());
  try {
    first.Attributes().Item("Missing");
    ADD_FAILURE() << "a missing attribute must fail";
  } catch (const kv::Failure& f) {
    EXPECT_NE(std::string(f.what()).find("Missing"), std::string::npos);
  }
  EXPECT_THROW(root.ChildNodes().Item("Missing"), kv::Failure);

  // Writing an attribute spelled differently replaces it, in the writer's spelling and place.
  first.SetAttribute("NAME", "c");
  EXPECT_EQ(first.Attributes().Count(), 2);
  EXPECT_EQ(first.Attributes().Item("name").Name(), "NAME");
  EXPECT_EQ(first.Attributes().Item("name").Value(), "c");
  EXPECT_NE(doc.Xml().find(R"(<DocType NAME="c" OutputFolder="o"/>)"), std::string::npos) << doc.Xml();
}

TEST(XmlDocument, ChildNodesAreOrderedElementsOnly) {
  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML("<r>text<a/><!-- note --><b>1</b>tail<c/></r>"));
  auto children = doc.RootNode().ChildNodes();
  EXPECT_EQ(children.Count(), 3);
  std::vector<std::string> names;
  for (XMLNode child : children) names.push_back(child.Name());
  EXPECT_EQ(names, (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(children.Item(2L).Name(), "b");
  EXPECT_THROW(children.Item(4L), kv::Failure);
  EXPECT_EQ(doc.RootNode().Text(), "text1tail");

  // Writing Text replaces the content, children included.
  doc.RootNode().Text("plain");
  EXPECT_EQ(doc.RootNode().ChildNodes().Count(), 0);
  EXPECT_EQ(doc.RootNode().Text(), "plain");
}

TEST(XmlDocument, NodesOutliveTheirDocument) {
  std::optional<XMLNode> kept;
  {
    XMLDocument doc;
    ASSERT_TRUE(doc.LoadXML("<r><a x='1'/></r>"));
    kept = doc.RootNode().ChildNodes().Item("a");
    ASSERT_TRUE(doc.LoadXML("<other/>"));  // the old tree stays alive for `kept`
  }
  EXPECT_EQ(kept->Name(), "a");
  EXPECT_EQ(kept->Attributes().Item("x").Value(), "1");
}

TEST(XmlDocument, ParseErrorsNameTheLine) {
  XMLDocument doc;
  doc.RootNode().Name("Kept");
  EXPECT_FALSE(doc.LoadXML("<a>\n<b>\n</a>"));
  EXPECT_TRUE(doc.ParseError().starts_with("Line 3: ")) << doc.ParseError();
  EXPECT_EQ(doc.RootNode().Name(), "Kept");
  EXPECT_FALSE(doc.LoadXML(""));
  EXPECT_FALSE(doc.ParseError().empty());
  EXPECT_TRUE(doc.LoadXML("<?xml version='1.0' encoding='windows-1252'?><a>café</a>"));
  EXPECT_EQ(doc.RootNode().Text(), "café");  // the text is UTF-8 whatever the declaration says
  EXPECT_EQ(doc.ParseError(), "");
  EXPECT_THROW(doc.RootNode().AddChild("bad name"), kv::Failure);
}

TEST(XmlDocument, NeverLoadsExternalEntitiesOrDtds) {
  kv::test::TempFolder temp;
  std::ofstream(temp.path("secret.txt")) << "SECRET-CONTENT";
  const std::string uri = "file://" + temp.path("secret.txt");

  const std::string inputs[] = {
      "<!DOCTYPE r [<!ENTITY e SYSTEM \"" + uri + "\">]><r>&e;</r>",
      "<!DOCTYPE r [<!ENTITY % p SYSTEM \"" + uri + "\"> %p;]><r/>",
      "<!DOCTYPE r SYSTEM \"" + uri + "\"><r/>",
      "<!DOCTYPE r SYSTEM \"http://127.0.0.1:9/never.dtd\"><r a='1'/>",
  };
  for (const std::string& input : inputs) {
    XMLDocument doc;
    if (doc.LoadXML(input)) {
      EXPECT_EQ(doc.RootNode().Text().find("SECRET"), std::string::npos) << input;
      EXPECT_EQ(doc.Xml().find("SECRET"), std::string::npos) << input;
    } else {
      EXPECT_FALSE(doc.ParseError().empty()) << input;
    }
  }
}

TEST(XmlDocument, EntityExpansionBombIsRefused) {
  std::string bomb = "<!DOCTYPE r [<!ENTITY a0 \"xxxxxxxxxx\">";
  for (int i = 1; i <= 9; ++i) {
    const std::string prev = "&a" + std::to_string(i - 1) + ";";
    std::string value;
    for (int k = 0; k < 10; ++k) value += prev;
    bomb += "<!ENTITY a" + std::to_string(i) + " \"" + value + "\">";
  }
  bomb += "]><r>&a9;</r>";
  XMLDocument doc;
  if (doc.LoadXML(bomb))
    EXPECT_LT(doc.RootNode().Text().size(), 1000000u);
  else
    EXPECT_FALSE(doc.ParseError().empty());
}

}  // namespace

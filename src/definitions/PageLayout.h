// A template's page layouts: the layout files and the rules for their output.
#pragma once

#include <string>
#include <vector>

namespace kv {

struct PageLayoutKeyword {
  std::string Text;
  std::string Kind;  // "K" index, "A" associative links, "F"
};

// One layout file and the rules for its output. An empty NamespaceList makes it a general file.
class PageLayout {
 public:
  std::string Name;
  std::string TemplateFileName;  // relative to the template's folder
  std::string OutputFileNamePattern;
  std::string NamespaceList;  // comma-separated namespace definition names
  std::string DependsOnNamespaceName;
  std::string DependsOnParameters;
  long DependsOnMinimum = -1;  // -1: no dependency check
  std::vector<PageLayoutKeyword> Keywords;
};

}  // namespace kv

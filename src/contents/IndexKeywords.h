// The index keywords authors write into comments ("##KEYWORDS", for a component
// "##MODULE_KEYWORDS"), separated by "|", a "," making a keyword hierarchical; and the keywords
// and index entries of a definition's items for the index of a build.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kavrel/Object.h"

namespace kv {

class DataProvider;
class FileSystem;
class INamespaceProvider;
class Keywords;
class NamespaceDef;

struct IndexEntry {
  std::string Title;
  std::string QualifiedName;
};

// Adds the item's comment keywords to `Keywords`, each jumping to `Target`. Items without
// comments add nothing.
void GetIndexKeywords(const ObjectPtr& obj, Keywords& Keywords, const std::string& Target);
void GetIndexKeywordsEx(const ObjectPtr& obj, Keywords& Keywords, const std::string& Target, bool FIndex, bool AIndex);
// One entry per comment keyword of the item, with the item's qualified name.
std::vector<IndexEntry> IndexEntries(const ObjectPtr& obj);

// For every item of `nd` below `ParentObject` whose definition is indexed ("i" among its child
// kinds): its title as a keyword to its page, and its comment keywords; then the same for the
// child definitions below each item.
void GetKeywordsEx(Keywords& Keywords, const std::shared_ptr<NamespaceDef>& nd, const ObjectPtr& ParentObject,
                   INamespaceProvider& Provider, DataProvider& DDP);
// Writes `Scrap` for every indexed item of `nd` below `ParentObject`, followed by a "See Also"
// entry for each of its comment keywords that holds a "," ("Title, target"); then the same for the
// child definitions.
void OutputIndexEntries(FileSystem& OutputFile, const std::shared_ptr<NamespaceDef>& nd, const ObjectPtr& ParentObject,
                        INamespaceProvider& Provider, DataProvider& DDP, const std::string& Scrap, bool Help2);

}  // namespace kv

// The kinds of tagged comment the configuration defines.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Collection.h"
#include "kavrel/Export.h"

namespace kv {

// The definition of one kind of tagged comment.
class KV_API TaggedCommentDef {
 public:
  std::string TagIdentifier;
  std::string Caption;
  std::string DisplayName;
  long DataType = 0;
  std::string DesignerName;
  std::string IconFileName;
  bool AppendToDescription = false;
  long WrapType = 3;         // 2 line, 3 paragraph
  std::string CommentFlags;  // letters "h", "f"
  bool MergeInBuffer = false;
  std::string UpgradedTagIdentifier;
  bool UpgradeStop = false;
  std::string XMLTagNames;  // comma list
  std::string Alias;
};

class KV_API TaggedCommentDefs : public Collection<std::shared_ptr<TaggedCommentDef>> {};

// The kinds of tagged comment of the installation's configuration, as they stand now.
KV_API std::shared_ptr<const TaggedCommentDefs> ConfiguredTaggedCommentDefs();

}  // namespace kv

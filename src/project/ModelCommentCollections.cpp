#include "project/ModelCommentCollections.h"

#include "definitions/ModelComments.h"

namespace kv {

void ModelCommentCollections::Add(const std::shared_ptr<ModelComment>& Comment) {
  if (Comment->ItemName.find_first_of("?*") != std::string::npos)
    mWildcards[Comment->ItemKind].push_back(Comment);
  else
    mExact[Comment->ItemKind][Comment->ItemName].push_back(Comment);
}

long ModelCommentCollections::Count() const {
  return long(mExact.size() + mWildcards.size());
}

const ModelCommentCollections::Comments* ModelCommentCollections::Exact(std::string_view ItemKind,
                                                                        std::string_view ItemName) const {
  const auto kind = mExact.find(ItemKind);
  if (kind == mExact.end()) return nullptr;
  const auto name = kind->second.find(ItemName);
  return name == kind->second.end() ? nullptr : &name->second;
}

const ModelCommentCollections::Comments* ModelCommentCollections::Wildcards(std::string_view ItemKind) const {
  const auto kind = mWildcards.find(ItemKind);
  return kind == mWildcards.end() ? nullptr : &kind->second;
}

}  // namespace kv

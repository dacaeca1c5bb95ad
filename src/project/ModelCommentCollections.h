// The model comments of a build, ready to be matched against items: by the namespace definition
// they are for, exact names looked up by name and wildcard patterns kept in order.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Text.h"

namespace kv {

class ModelComment;

class ModelCommentCollections {
 public:
  using Comments = std::vector<std::shared_ptr<ModelComment>>;

  // Files the comment under its kind: a name holding "?" or "*" is a wildcard pattern; comments
  // of the same exact name are all kept, in order.
  void Add(const std::shared_ptr<ModelComment>& Comment);
  // The number of kinds with comments, exact and wildcard counted apart.
  long Count() const;
  // The comments of a kind for exactly this name (ignoring case), or nothing.
  const Comments* Exact(std::string_view ItemKind, std::string_view ItemName) const;
  // The wildcard comments of a kind, or nothing.
  const Comments* Wildcards(std::string_view ItemKind) const;

 private:
  using ByName = std::map<std::string, Comments, text::LessIgnoreCase>;
  std::map<std::string, ByName, text::LessIgnoreCase> mExact;
  std::map<std::string, Comments, text::LessIgnoreCase> mWildcards;
};

}  // namespace kv

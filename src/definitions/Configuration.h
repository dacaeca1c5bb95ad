// The installation's configuration: doc types, templates (see Template.h), the kinds of tagged
// comment, the model comment profiles and the code languages, read from the configuration folder
// (see docs/configuration.md); a build sets a few flags on them and holds references to them.
// Lookups by key fail rather than return nothing.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "definitions/CodeLanguage.h"
#include "definitions/ModelComments.h"
#include "definitions/Template.h"
#include "kavrel/DocTypeDef.h"
#include "kavrel/TaggedCommentDef.h"

namespace kv {

// The process-wide configuration, read from the configuration folder on first use.
class ConfigurationRoot {
 public:
  static ConfigurationRoot& instance();

  const std::vector<std::shared_ptr<DocTypeDef>>& DocTypeDefs();
  const kv::ModelCommentProfiles& ModelCommentProfiles();
  // Every installed template, keyed by name.
  const kv::Templates& Templates();
  const kv::TaggedCommentDefs& TaggedCommentDefs();
  const kv::CodeLanguages& CodeLanguages();
  // The configuration folder, ending in "/".
  std::string ConfigPath() const;
  // The folder below which "Templates/" lies, ending in "/": the configuration folder.
  std::string ApplicationPath() const;
  // `Name` with every character that no file name may hold replaced.
  std::string ValidFileName(std::string_view Name);

  // What went wrong while reading the definitions, one line each; empty when all was read.
  const std::vector<std::string>& LoadErrors();
  // Forgets what was read, so that the next use reads the configuration folder again.
  void Reset();

 private:
  struct Content;
  ConfigurationRoot();
  ~ConfigurationRoot();
  Content& content();
  std::unique_ptr<Content> mContent;
};

}  // namespace kv

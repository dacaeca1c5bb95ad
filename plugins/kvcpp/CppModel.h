// The documented code of one project's kv.cpp doc type: its input and, once asked for, what the
// parser found. The project plug-in owns it; the namespace provider, which serves every doc type
// with its handler, finds it by the project.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CppInput.h"
#include "CppItems.h"
#include "CppParser.h"

namespace kv {
class IKVProject;
}

namespace kv::cpp {

class CppModel {
 public:
  CppInput Input;

  // Parses on first use and after `Invalidate`; the warnings go to the project's build log.
  std::shared_ptr<const ParseResult> Parsed(IKVProject* project);
  // The items of the parse, made on first use.
  CppItems& Items(IKVProject* project);
  void Invalidate() {
    mParsed.reset();
    mItems.reset();
  }

  // The headers each declaration's file is shown relative to: the common folder of the sources.
  std::string RelativeName(const std::string& file) const;

  // The model that the plug-in of `project` registered, if any.
  static std::shared_ptr<CppModel> Of(const IKVProject* project);
  static void Register(const IKVProject* project, const std::shared_ptr<CppModel>& model);
  static void Unregister(const IKVProject* project);

 private:
  std::shared_ptr<ParseResult> mParsed;
  std::unique_ptr<CppItems> mItems;
  std::string mRoot;
};

}  // namespace kv::cpp

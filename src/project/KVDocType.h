// One kind of thing a project documents, bound to its plug-in.
#pragma once

#include <memory>
#include <string>

#include "project/IKVProjectPlugIn.h"

namespace kv {

class KVDocType {
 public:
  KVDocType(std::string name, std::shared_ptr<IKVProjectPlugIn> plugIn)
      : mName(std::move(name)), mPlugIn(std::move(plugIn)) {}

  const std::string& Name() const { return mName; }
  const std::shared_ptr<IKVProjectPlugIn>& ProjectPlugIn() const { return mPlugIn; }
  void ReleasePlugIn() { mPlugIn.reset(); }

  bool SomethingToDocument() const { return mPlugIn && mPlugIn->SomethingToDocument(); }
  long SourceItemCount() const { return mPlugIn ? mPlugIn->RootItemTypeCount("source") : 0; }
  long BinaryItemCount() const { return mPlugIn ? mPlugIn->RootItemTypeCount("binary") : 0; }
  long VBSourceItemCount() const { return mPlugIn ? mPlugIn->RootItemTypeCount("vbsource") : 0; }

 private:
  std::string mName;
  std::shared_ptr<IKVProjectPlugIn> mPlugIn;
};

}  // namespace kv

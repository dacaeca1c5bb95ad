// Files copied into the output of every build.
#pragma once

#include <string>
#include <string_view>

#include "contracts/RecordCollection.h"

namespace kv {

class AdditionalFile {
 public:
  std::string FileName;  // absolute

  bool IsImage() const;
  bool IsScript() const;
  bool IsStyleSheet() const;
};

class AdditionalFiles : public TrackedCollection<AdditionalFile> {
 public:
  // True when an entry has the same name, folder left out and case ignored.
  bool Exists(std::string_view FileName) const;
  // Once an image has been seen the answer stays true for the life of the collection, even when
  // the image is removed again: the build's copy step relies on it.
  bool ContainsImages();

 protected:
  void Added(const AdditionalFile& item) override;
  void Removed(const AdditionalFile& item) override;

 private:
  bool mContainsImagesValid = false;
  bool mContainsImages = false;
};

}  // namespace kv

#include "project/AdditionalFiles.h"

#include "kavrel/Text.h"

namespace kv {
namespace {

// What follows the last "." of the whole name, empty if there is none.
std::string extensionOf(std::string_view fileName) {
  const size_t dot = fileName.rfind('.');
  return dot == std::string_view::npos ? std::string() : std::string(fileName.substr(dot + 1));
}

std::string_view nameOf(std::string_view fileName) {
  const size_t slash = fileName.find_last_of("/\\");
  return slash == std::string_view::npos ? fileName : fileName.substr(slash + 1);
}

}  // namespace

bool AdditionalFile::IsImage() const {
  const std::string ext = text::toLower(extensionOf(FileName));
  return ext == "png" || ext == "bmp" || ext == "gif" || ext == "jpg" || ext == "pcx";
}

bool AdditionalFile::IsScript() const {
  return text::equalsIgnoreCase(extensionOf(FileName), "js");
}

bool AdditionalFile::IsStyleSheet() const {
  return text::equalsIgnoreCase(extensionOf(FileName), "css");
}

bool AdditionalFiles::Exists(std::string_view FileName) const {
  const std::string_view name = nameOf(FileName);
  for (const auto& file : *this)
    if (text::equalsIgnoreCase(nameOf(file->FileName), name)) return true;
  return false;
}

bool AdditionalFiles::ContainsImages() {
  if (!mContainsImagesValid) {
    for (const auto& file : *this)
      if (file->IsImage()) {
        mContainsImages = true;
        break;
      }
    mContainsImagesValid = true;
  }
  return mContainsImages;
}

void AdditionalFiles::Added(const AdditionalFile& item) {
  mContainsImagesValid = false;
  TrackedCollection::Added(item);
}

void AdditionalFiles::Removed(const AdditionalFile& item) {
  mContainsImagesValid = false;
  TrackedCollection::Removed(item);
}

}  // namespace kv

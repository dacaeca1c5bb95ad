// The keyword stores of a build and the forwarders to what writes bulk content.
#include "project/KVProject.h"
#include "project/Keywords.h"
#include "project/ProjectContents.h"

namespace kv {

void KVProject::NewKeywordStores() {
  mKKeywords = std::make_shared<Keywords>();
  mAKeywords = std::make_shared<Keywords>();
  mFKeywords = std::make_shared<Keywords>();
  KIndexBuilt = AIndexBuilt = FIndexBuilt = false;
}

void KVProject::ReleaseKeywordStores() {
  mKKeywords.reset();
  mAKeywords.reset();
  mFKeywords.reset();
}

void KVProject::BuildTOC(std::shared_ptr<FileSystem>& OutputFile, const std::shared_ptr<KVDocType>& SpecificDocType) {
  if (mContents) mContents->BuildTOC(OutputFile, SpecificDocType);
}

void KVProject::BuildIndex(std::shared_ptr<FileSystem>& OutputFile, const std::string& ScrapName) {
  if (mContents) mContents->BuildIndex(OutputFile, ScrapName);
}

void KVProject::StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType) {
  if (mContents) mContents->StreamContent(OutputFile, ContentType);
}

}  // namespace kv

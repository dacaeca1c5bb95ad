#include "contents/ContentsWriter.h"

#include "contents/ContentIndex.h"
#include "contents/TableOfContents.h"
#include "kavrel/Failure.h"
#include "project/KVProject.h"

namespace kv {
namespace {

KVProject& live(const std::weak_ptr<KVProject>& project) {
  const auto p = project.lock();
  if (!p) throw ObjectNotSet();
  return *p;
}

}  // namespace

void ContentsWriter::Install(const std::shared_ptr<KVProject>& project) {
  project->Contents(std::make_shared<ContentsWriter>(project));
}

void ContentsWriter::BuildTOC(std::shared_ptr<FileSystem>& OutputFile,
                              const std::shared_ptr<KVDocType>& SpecificDocType) {
  TableOfContents(live(mProject)).BuildTOC(OutputFile, SpecificDocType);
}

void ContentsWriter::BuildIndex(std::shared_ptr<FileSystem>& OutputFile, const std::string& ScrapName) {
  ContentIndex(live(mProject)).BuildIndex(OutputFile, ScrapName);
}

void ContentsWriter::StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType) {
  ContentIndex(live(mProject)).StreamContent(OutputFile, ContentType);
}

}  // namespace kv

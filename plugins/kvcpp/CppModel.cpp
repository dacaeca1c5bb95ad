#include "CppModel.h"

#include <filesystem>
#include <map>
#include <mutex>

#include "ParserModule.h"
#include "kavrel/IKVProject.h"

namespace kv::cpp {
namespace {

std::mutex& registryLock() {
  static std::mutex lock;
  return lock;
}
std::map<const IKVProject*, std::weak_ptr<CppModel>>& registry() {
  static std::map<const IKVProject*, std::weak_ptr<CppModel>> models;
  return models;
}

}  // namespace

std::shared_ptr<const ParseResult> CppModel::Parsed(IKVProject* project) {
  if (!mParsed) {
    mParsed = std::make_shared<ParseResult>(Parse(Input, ParserFolder()));
    // The common folder of the files, for names that a reader recognises.
    mRoot.clear();
    for (const auto& file : mParsed->Files) {
      const std::string folder = std::filesystem::path(file).parent_path().string() + "/";
      if (mRoot.empty()) mRoot = folder;
      while (!mRoot.empty() && folder.compare(0, mRoot.size(), mRoot) != 0) {
        mRoot.pop_back();
        mRoot.erase(mRoot.find_last_of('/') + 1);
      }
    }
    if (project)
      for (const auto& d : mParsed->Diagnostics) project->RaiseBuildError(d.Format(), KVWarning);
  }
  return mParsed;
}

CppItems& CppModel::Items(IKVProject* project) {
  if (!mItems || !mParsed)
    mItems = std::make_unique<CppItems>(
        *Parsed(project), "kv.cpp", [this](const std::string& file) { return RelativeName(file); },
        ConfiguredTaggedCommentDefs());
  return *mItems;
}

std::string CppModel::RelativeName(const std::string& file) const {
  if (!mRoot.empty() && file.compare(0, mRoot.size(), mRoot) == 0) return file.substr(mRoot.size());
  return std::filesystem::path(file).filename().string();
}

std::shared_ptr<CppModel> CppModel::Of(const IKVProject* project) {
  std::lock_guard lock(registryLock());
  const auto found = registry().find(project);
  return found == registry().end() ? nullptr : found->second.lock();
}

void CppModel::Register(const IKVProject* project, const std::shared_ptr<CppModel>& model) {
  std::lock_guard lock(registryLock());
  registry()[project] = model;
}

void CppModel::Unregister(const IKVProject* project) {
  std::lock_guard lock(registryLock());
  registry().erase(project);
}

}  // namespace kv::cpp

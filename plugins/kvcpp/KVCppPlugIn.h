// The project plug-in of the kv.cpp doc type ("KVCpp.ProjectPlugIn"). It keeps the doc type's
// input in the project file, as a "KVCpp" element:
//
//   <KVCpp DocType="kv.cpp" Standard="c++20" CompileCommands="build" PlainComments="False">
//     <Source>include</Source>            a file, a folder or a wildcard pattern; repeatable
//     <IncludeFolder>third/include</IncludeFolder>
//     <Define>NDEBUG</Define>
//   </KVCpp>
//
// File names are relative to the project file. Before each build it parses the headers again and
// sends the compiler's errors to the build log as warnings.
#pragma once

#include <memory>

#include "CppModel.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/Object.h"

namespace kv::cpp {

class KVCppPlugIn : public Object, public IKVProjectPlugIn {
 public:
  KVCppPlugIn();
  std::string typeName() const override { return "KVCppPlugIn"; }
  // For programs that make projects: "AddSource(path)" (a file, folder or pattern to document),
  // "AddIncludeFolder(path)", "AddDefine(NAME=VALUE)" and "SetStandard(c++17)".
  Variant call(std::string_view member, const Arguments& args) override;

  void Initialise(IKVProject& project) override;
  void LoadXML(XMLDocument& doc) override;
  void SaveXML(XMLDocument& doc) override;
  void BeforeBuild() override;
  bool SomethingToDocument() override { return !mModel->Input.Sources.empty(); }
  void Terminate() override;
  void Reset() override;
  ObjectPtr RootItems(const std::string& SupportedProperties) override;
  long RootItemTypeCount(const std::string& RootItemType) override;
  ObjectPtr GetObjectFromQualifiedName(const std::string& QualifiedName) override;
  std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() override;

  const CppInput& Input() const { return mModel->Input; }
  CppInput& Input() { return mModel->Input; }

 private:
  std::string OwnDocType() const;

  std::shared_ptr<CppModel> mModel = std::make_shared<CppModel>();
  std::weak_ptr<IKVProject> mProject;
  const IKVProject* mRegisteredWith = nullptr;
};

}  // namespace kv::cpp

// Settings for documenting assemblies.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "project/ProjectSettingsBase.h"

namespace kv {

class XMLNode;

class DotNetProperties : public ProjectSettingsBase {
 public:
  bool IncludeRelationshipDiagrams() const { return mIncludeRelationshipDiagrams; }
  void IncludeRelationshipDiagrams(bool v) { Set(mIncludeRelationshipDiagrams, v); }
  bool IncludeInheritanceHierarchies() const { return mIncludeInheritanceHierarchies; }
  void IncludeInheritanceHierarchies(bool v) { Set(mIncludeInheritanceHierarchies, v); }
  bool IncludeBaseMembers() const { return mIncludeBaseMembers; }
  void IncludeBaseMembers(bool v) { Set(mIncludeBaseMembers, v); }
  const std::string& StandardInterfaces() const { return mStandardInterfaces; }
  void StandardInterfaces(std::string_view v) { Set(mStandardInterfaces, v); }
  bool OnlyLinkInherited() const { return mOnlyLinkInherited; }
  void OnlyLinkInherited(bool v) { Set(mOnlyLinkInherited, v); }
  bool ExternalDocs() const { return mExternalDocs; }
  void ExternalDocs(bool v) { Set(mExternalDocs, v); }
  bool UseCommentFiles() const { return mUseCommentFiles; }
  void UseCommentFiles(bool v) { Set(mUseCommentFiles, v); }
  bool DrillCommentFiles() const { return mDrillCommentFiles; }
  void DrillCommentFiles(bool v) { Set(mDrillCommentFiles, v); }
  // Written to the project file but never read back.
  bool GenerateXMLLinks() const { return mGenerateXMLLinks; }
  void GenerateXMLLinks(bool v) { Set(mGenerateXMLLinks, v); }
  const std::string& XMLIsland() const { return mXMLIsland; }
  void XMLIsland(std::string_view v) { Set(mXMLIsland, v); }
  bool NoInheritedTopics() const { return mNoInheritedTopics; }
  void NoInheritedTopics(bool v) { Set(mNoInheritedTopics, v); }
  bool NoInheritedInLists() const { return mNoInheritedInLists; }
  void NoInheritedInLists(bool v) { Set(mNoInheritedInLists, v); }
  bool CreateXMLCommentFile() const { return mCreateXMLCommentFile; }
  void CreateXMLCommentFile(bool v) { Set(mCreateXMLCommentFile, v); }
  // Comma-separated names of code languages left out.
  const std::string& ExcludedLanguages() const { return mExcludedLanguages; }
  void ExcludedLanguages(std::string_view v) { Set(mExcludedLanguages, v); }
  bool GenerateAttributes() const { return mGenerateAttributes; }
  void GenerateAttributes(bool v) { Set(mGenerateAttributes, v); }
  // Comma-separated wildcard patterns of attribute type names.
  const std::string& AttributeFilter() const { return mAttributeFilter; }
  void AttributeFilter(std::string_view v);
  bool AttributeFilterInclude() const { return mAttributeFilterInclude; }
  void AttributeFilterInclude(bool v) { Set(mAttributeFilterInclude, v); }
  bool VBNETDefaultConstructor() const { return mVBNETDefaultConstructor; }
  void VBNETDefaultConstructor(bool v) { Set(mVBNETDefaultConstructor, v); }
  bool LinkOverridenMembersToBaseImplementation() const { return mLinkOverridenMembersToBaseImplementation; }
  void LinkOverridenMembersToBaseImplementation(bool v) { Set(mLinkOverridenMembersToBaseImplementation, v); }
  bool UseOverloadSummaryForMasterSummary() const { return mUseOverloadSummaryForMasterSummary; }
  void UseOverloadSummaryForMasterSummary(bool v) { Set(mUseOverloadSummaryForMasterSummary, v); }
  bool ExcludeEditorBrowsable() const { return mExcludeEditorBrowsable; }
  void ExcludeEditorBrowsable(bool v) { Set(mExcludeEditorBrowsable, v); }
  bool GenerateBreadcrumbs() const { return mGenerateBreadcrumbs; }
  void GenerateBreadcrumbs(bool v) { Set(mGenerateBreadcrumbs, v); }
  bool IncludeAssemblyBreadcrumb() const { return mIncludeAssemblyBreadcrumb; }
  void IncludeAssemblyBreadcrumb(bool v) { Set(mIncludeAssemblyBreadcrumb, v); }

  // Whether attributes of this type are documented: the filter is an include list when
  // AttributeFilterInclude is on and an exclude list otherwise.
  bool IncludeAttribute(std::string_view AttributeTypeName) const;

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;

 private:
  void SplitAttributeFilter();

  bool mIncludeRelationshipDiagrams = true;
  bool mIncludeInheritanceHierarchies = true;
  bool mIncludeBaseMembers = false;
  std::string mStandardInterfaces = "System.*";
  bool mOnlyLinkInherited = true;
  bool mExternalDocs = true;
  bool mUseCommentFiles = true;
  bool mDrillCommentFiles = false;
  bool mGenerateXMLLinks = false;
  std::string mXMLIsland;
  bool mNoInheritedTopics = false;
  bool mNoInheritedInLists = false;
  bool mCreateXMLCommentFile = false;
  std::string mExcludedLanguages;
  bool mGenerateAttributes = true;
  std::string mAttributeFilter;
  std::vector<std::string> mAttributeFilterPatterns;
  bool mAttributeFilterInclude = false;
  bool mVBNETDefaultConstructor = false;
  bool mLinkOverridenMembersToBaseImplementation = false;
  bool mUseOverloadSummaryForMasterSummary = true;
  bool mExcludeEditorBrowsable = true;
  bool mGenerateBreadcrumbs = true;
  bool mIncludeAssemblyBreadcrumb = false;
};

}  // namespace kv

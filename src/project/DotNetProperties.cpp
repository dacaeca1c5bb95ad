#include "project/DotNetProperties.h"

#include "definitions/Configuration.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "kavrel/Text.h"
#include "services/Like.h"

namespace kv {

void DotNetProperties::AttributeFilter(std::string_view v) {
  if (v == mAttributeFilter) return;
  mAttributeFilter = v;
  SplitAttributeFilter();
  Changed();
}

void DotNetProperties::SplitAttributeFilter() {
  mAttributeFilterPatterns = text::split(mAttributeFilter, ",");
}

bool DotNetProperties::IncludeAttribute(std::string_view AttributeTypeName) const {
  return guard<bool>("DotNetProperties", [&] {
    for (const auto& pattern : mAttributeFilterPatterns)
      if (Like(AttributeTypeName, pattern, true)) return mAttributeFilterInclude;
    return !mAttributeFilterInclude;
  });
}

void DotNetProperties::Load(const XMLNode& e) {
  using xmlvalue::Attr;
  using xmlvalue::IsTrue;
  guard("DotNetProperties", [&] {
    mIncludeRelationshipDiagrams = IsTrue(Attr(e, "IncludeRelationshipDiagrams"));
    mIncludeInheritanceHierarchies = IsTrue(Attr(e, "IncludeInheritanceHierarchies"));
    mIncludeBaseMembers = IsTrue(Attr(e, "IncludeBaseMembers"));
    mStandardInterfaces = Attr(e, "StandardInterfaces");
    mOnlyLinkInherited = IsTrue(Attr(e, "OnlyLinkInherited"));
    mExternalDocs = IsTrue(Attr(e, "ExternalDocs"));
    mUseCommentFiles = IsTrue(Attr(e, "UseCommentFiles"));
    mDrillCommentFiles = IsTrue(Attr(e, "DrillCommentFiles"));

    // Settings that older files lack; each is read on its own.
    bool anyMissing = false;
    auto read = [&](auto&& body) { anyMissing |= !ignoreFailure(body); };
    read([&] { mXMLIsland = Attr(e, "XMLIsland"); });
    read([&] { mNoInheritedTopics = IsTrue(Attr(e, "NoInheritedTopics")); });
    read([&] { mNoInheritedInLists = IsTrue(Attr(e, "NoInheritedInLists")); });
    read([&] { mCreateXMLCommentFile = IsTrue(Attr(e, "CreateXMLCommentFile")); });
    read([&] { mExcludedLanguages = Attr(e, "ExcludedLanguages"); });
    read([&] { mGenerateAttributes = IsTrue(Attr(e, "GenerateAttributes")); });
    read([&] {
      mAttributeFilter = Attr(e, "AttributeFilter");
      SplitAttributeFilter();
    });
    read([&] { mAttributeFilterInclude = IsTrue(Attr(e, "AttributeFilterInclude")); });
    read([&] { mVBNETDefaultConstructor = IsTrue(Attr(e, "VBNETDefaultConstructor")); });
    read([&] {
      mLinkOverridenMembersToBaseImplementation = IsTrue(Attr(e, "LinkOverridenMembersToBaseImplementation"));
    });
    read([&] { mUseOverloadSummaryForMasterSummary = IsTrue(Attr(e, "UseOverloadSummaryForMasterSummary")); });
    read([&] { mExcludeEditorBrowsable = IsTrue(Attr(e, "ExcludeEditorBrowsable")); });
    read([&] { mGenerateBreadcrumbs = IsTrue(Attr(e, "GenerateBreadcrumbs")); });
    read([&] { mIncludeAssemblyBreadcrumb = IsTrue(Attr(e, "IncludeAssemblyBreadcrumb")); });
    if (!anyMissing) return;

    // An older file: leave out the languages the installation has switched off.
    std::vector<std::string> off;
    for (const auto& language : ConfigurationRoot::instance().CodeLanguages())
      if (!language->SwitchedOn) off.push_back(language->Name);
    mExcludedLanguages = text::join(off, ",");
  });
}

void DotNetProperties::Save(XMLNode& e) const {
  using xmlvalue::Bool;
  e.SetAttribute("IncludeRelationshipDiagrams", Bool(mIncludeRelationshipDiagrams));
  e.SetAttribute("IncludeInheritanceHierarchies", Bool(mIncludeInheritanceHierarchies));
  e.SetAttribute("IncludeBaseMembers", Bool(mIncludeBaseMembers));
  e.SetAttribute("StandardInterfaces", mStandardInterfaces);
  e.SetAttribute("OnlyLinkInherited", Bool(mOnlyLinkInherited));
  e.SetAttribute("ExternalDocs", Bool(mExternalDocs));
  e.SetAttribute("UseCommentFiles", Bool(mUseCommentFiles));
  e.SetAttribute("DrillCommentFiles", Bool(mDrillCommentFiles));
  e.SetAttribute("GenerateXMLLinks", Bool(mGenerateXMLLinks));
  e.SetAttribute("XMLIsland", mXMLIsland);
  e.SetAttribute("NoInheritedTopics", Bool(mNoInheritedTopics));
  e.SetAttribute("NoInheritedInLists", Bool(mNoInheritedInLists));
  e.SetAttribute("CreateXMLCommentFile", Bool(mCreateXMLCommentFile));
  e.SetAttribute("ExcludedLanguages", mExcludedLanguages);
  e.SetAttribute("GenerateAttributes", Bool(mGenerateAttributes));
  e.SetAttribute("AttributeFilter", mAttributeFilter);
  e.SetAttribute("AttributeFilterInclude", Bool(mAttributeFilterInclude));
  e.SetAttribute("VBNETDefaultConstructor", Bool(mVBNETDefaultConstructor));
  e.SetAttribute("LinkOverridenMembersToBaseImplementation", Bool(mLinkOverridenMembersToBaseImplementation));
  e.SetAttribute("UseOverloadSummaryForMasterSummary", Bool(mUseOverloadSummaryForMasterSummary));
  e.SetAttribute("ExcludeEditorBrowsable", Bool(mExcludeEditorBrowsable));
  e.SetAttribute("GenerateBreadCrumbs", Bool(mGenerateBreadcrumbs));
  e.SetAttribute("IncludeAssemblyBreadCrumb", Bool(mIncludeAssemblyBreadcrumb));
}

}  // namespace kv

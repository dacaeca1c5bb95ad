// The model factories of Root.
#include "root/Root.h"

namespace kv {

namespace {
// What a new project reads: every member, whatever its scope, and every kind of comment.
void defaultOptions(vbProject& project) {
  auto& o = project.ProjectOptions();
  o.IncludePublic = o.IncludeFriend = o.IncludeProtected = o.IncludePrivate = true;
  o.ReadSourceComments = o.ReadXMLComments = o.MergeSourceComments = true;
}
}  // namespace

std::shared_ptr<vbProject> Root::NewVBProject() const {
  auto project = std::make_shared<vbProject>();
  defaultOptions(*project);
  return project;
}

std::shared_ptr<vbProject> Root::NewDotNetVBProject(const std::string& FileName) const {
  return vbProject::LoadDotNet(FileName);
}

std::shared_ptr<VBProjectGroup> Root::NewVBProjectGroup() const {
  return std::make_shared<VBProjectGroup>();
}

}  // namespace kv

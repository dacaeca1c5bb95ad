// The example services of Root, which take the base folder of examples from the project.
#include "project/KVProject.h"
#include "root/Root.h"
#include "template/ExampleRendering.h"

namespace kv {

namespace {
std::string projectFolder(const KVProject& project) {
  return project.KVProjectFileName ? project.KVProjectFileName->Folder() : std::string();
}
}  // namespace

std::string Root::ExampleCode(const Example& e) const {
  return ExampleHtml(e, {}, true, DefaultWrapLength);
}

std::string Root::ExampleCodeEx(const Example& e, const KVProject& project) const {
  return ExampleCode2(e, project, true);
}

std::string Root::ExampleCode2(const Example& e, const KVProject& project, bool WrapInDivAndTable) const {
  return ExampleHtml(e, projectFolder(project), WrapInDivAndTable, DefaultWrapLength);
}

std::shared_ptr<Examples> Root::GetExamples(const ObjectPtr& obj, const KVProject& project) const {
  return blocks::GetExamples(obj, projectFolder(project));
}

}  // namespace kv

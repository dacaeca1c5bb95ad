#include "root/Root.h"

#include <memory>
#include <utility>
#include <vector>

#include "host/FailureHandler.h"
#include "host/Settings.h"

namespace kv {

namespace {

struct Form {
  std::size_t id;
  std::string name;
  std::function<void()> unload;
};

// Process-wide state, never destroyed, so that a Root released during exit finds it intact.
struct RootState {
  long instances = 0;
  std::unique_ptr<Root> global;
  Root::LayoutRefresh layoutRefresh;
  std::vector<std::function<void()>> releases;
  std::vector<Form> forms;
  std::size_t nextFormId = 1;
};

RootState& state() {
  static RootState* s = new RootState;
  return *s;
}

}  // namespace

std::size_t HostForms::Open(std::string name, std::function<void()> unload) {
  const std::size_t id = state().nextFormId++;
  state().forms.push_back({id, std::move(name), std::move(unload)});
  return id;
}

void HostForms::Close(std::size_t id) {
  std::erase_if(state().forms, [id](const Form& f) { return f.id == id; });
}

std::size_t HostForms::Count() {
  return state().forms.size();
}

void HostForms::UnloadAll() {
  while (!state().forms.empty()) {
    Form form = std::move(state().forms.back());
    state().forms.pop_back();
    if (form.unload) ignoreFailure(form.unload);
  }
}

Root::Root() {
  RootState& s = state();
  ++s.instances;
  ignoreFailure([&] {
    const SettingsFile machine = machineSettings();
    EditableSpanPrefix = machine.value(kv::RegKeyPath(), "EditableSpanPrefix").value_or("");
    EditableSpanSuffix = machine.value(kv::RegKeyPath(), "EditableSpanSuffix").value_or("");
  });
  if (s.instances == 1 && s.layoutRefresh) {
    ignoreFailure([&] { s.layoutRefresh(""); });
    ignoreFailure([&] { s.layoutRefresh("KV2008"); });
  }
}

Root::~Root() {
  RootState& s = state();
  if (--s.instances > 0) return;
  const auto releases = s.releases;  // a release may register another
  for (const auto& release : releases) ignoreFailure(release);
  HostForms::UnloadAll();
}

Root& Root::global() {
  RootState& s = state();
  if (!s.global) s.global = std::make_unique<Root>();
  return *s.global;
}

void Root::releaseGlobal() {
  // Moved out first so that global() during the last-instance work makes a fresh one.
  std::unique_ptr<Root> old = std::move(state().global);
}

long Root::instanceCount() {
  return state().instances;
}

void Root::setLayoutRefresh(LayoutRefresh refresh) {
  state().layoutRefresh = std::move(refresh);
}

void Root::addRelease(std::function<void()> release) {
  state().releases.push_back(std::move(release));
}

}  // namespace kv

#include "project/VariableValues.h"

namespace kv {

std::shared_ptr<VariableValue> VariableValue::Create(std::weak_ptr<ProjectContext> Project, bool System,
                                                     std::string_view Name, std::string_view Value) {
  auto record = std::make_shared<VariableValue>();
  record->KVProject = std::move(Project);
  record->System = System;
  record->Name = std::string(Name);
  record->Value(Value);
  return record;
}

void VariableValue::Value(std::string_view v) {
  if (v != mValue) {
    if (!System) MarkProjectChanged(KVProject);
    IsDefaultValue = false;
  }
  mValue = v;
}

std::shared_ptr<VariableValue> VariableValues::AddValue(std::string_view Key, std::string_view Value,
                                                        const std::weak_ptr<ProjectContext>& Project, bool System) {
  if (mCol.Exists(Key)) mCol.Remove(Key);
  auto record = VariableValue::Create(Project, System, Key, Value);
  mCol.Add(record, record->Name);
  return record;
}

}  // namespace kv

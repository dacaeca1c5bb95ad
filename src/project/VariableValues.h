// Project and template variables.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "contracts/RecordCollection.h"

namespace kv {

class ProjectContext;

class VariableValue {
 public:
  // A record with its project, System, Name and Value set in that order.
  static std::shared_ptr<VariableValue> Create(std::weak_ptr<ProjectContext> Project, bool System,
                                               std::string_view Name, std::string_view Value);

  std::string Name;
  // Set by the program: never saved and never marks the project changed.
  bool System = false;
  // The value is the template's default; such a record is not saved.
  bool IsDefaultValue = false;
  std::weak_ptr<ProjectContext> KVProject;

  const std::string& Value() const { return mValue; }
  // A new value marks the project changed (unless the record is a system one) and makes the
  // record no longer a default.
  void Value(std::string_view v);

 private:
  std::string mValue;
};

class VariableValues : public TrackedCollection<VariableValue> {
 public:
  // Replaces any record under `Key` without marking the project changed.
  std::shared_ptr<VariableValue> AddValue(std::string_view Key, std::string_view Value,
                                          const std::weak_ptr<ProjectContext>& Project, bool System);

 protected:
  bool MarksChange(const VariableValue& item) const override { return !item.System; }
};

}  // namespace kv

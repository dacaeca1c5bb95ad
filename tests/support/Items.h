// Small items made on the dynamic layer, for tests that need an item of some kind with a few
// members and no model behind it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kavrel/Failure.h"
#include "kavrel/Object.h"
#include "kavrel/Text.h"

namespace kv::test {

// An item of run-time type `type` with stored members.
inline std::shared_ptr<DynamicObject> makeItem(std::string type,
                                               std::initializer_list<std::pair<std::string, Variant>> members = {}) {
  auto item = std::make_shared<DynamicObject>(std::move(type));
  for (const auto& [name, value] : members) item->field(name, value);
  return item;
}

// A collection answering Item(index) from 1 and Item(key), and Count; an unknown key or index
// fails as a model's collection does.
inline std::shared_ptr<DynamicObject> makeCollection(std::vector<std::pair<std::string, ObjectPtr>> entries) {
  auto collection = std::make_shared<DynamicObject>("Collection");
  collection->method("Item", [entries](const Arguments& args) -> Variant {
    if (args.empty()) throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument");
    if (args[0].type() == Variant::Type::String) {
      for (const auto& [key, item] : entries)
        if (text::equalsIgnoreCase(key, args[0].toString())) return item;
    } else if (const auto index = args[0].toInteger(); index >= 1 && index <= long(entries.size())) {
      return entries[std::size_t(index - 1)].second;
    }
    throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
  });
  collection->property("Count", [n = long(entries.size())] { return Variant(n); });
  return collection;
}

}  // namespace kv::test

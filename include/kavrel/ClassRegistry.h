// Creation of objects by class name ("Library.Class"). The library registers its own classes;
// plug-in libraries register theirs when they are loaded. A name that cannot be created behaves
// as a class that is not installed.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/Text.h"

namespace kv {

class KV_API ClassRegistry {
 public:
  using Factory = std::function<ObjectPtr()>;

  static ClassRegistry& instance();

  // Registers or replaces a class. Names ignore case.
  void add(std::string className, Factory factory);
  void remove(std::string_view className);
  bool isRegistered(std::string_view className) const;

  // Fails with "Can't create object" (429) when the class is unknown or its factory fails or
  // returns nothing.
  ObjectPtr create(std::string_view className) const;
  // The same, with nullptr instead of a failure.
  ObjectPtr tryCreate(std::string_view className) const;

 private:
  std::map<std::string, Factory, text::LessIgnoreCase> mFactories;
};

}  // namespace kv

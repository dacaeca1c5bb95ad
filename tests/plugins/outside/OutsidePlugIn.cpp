// A doc type's plug-in that sees only the installed public headers. It is built twice, through
// the CMake package and through pkg-config, each time under its own class name (KV_OUTSIDE_CLASS).
// The library is loaded with every symbol bound at once, so a function the program does not
// export makes loading fail.
#include <memory>
#include <string>

#include "kavrel/ClassRegistry.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/NamespaceDef.h"

namespace {

class OutsidePlugIn : public kv::Object, public kv::IKVProjectPlugIn {
 public:
  std::string typeName() const override { return "OutsidePlugIn"; }

  std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() override {
    auto defs = std::make_shared<kv::NamespaceDefs>();
    auto def = std::make_shared<kv::NamespaceDef>();
    def->Name = "KV:OutsideRoot";
    defs->Add(def, def->Name);
    def->Prepare();
    return defs;
  }
};

}  // namespace

extern "C" void kavrel_register_plugin(kv::ClassRegistry& registry) {
  registry.add(KV_OUTSIDE_CLASS, [] { return std::make_shared<OutsidePlugIn>(); });
}

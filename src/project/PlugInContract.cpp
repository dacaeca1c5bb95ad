// The plug-in interfaces' type information lives here, once, in the host: plug-in libraries
// resolve it from the program that loads them.
#include "project/IKVProjectPlugIn.h"
#include "project/INamespaceProvider.h"

namespace kv {

IKVProjectPlugIn::~IKVProjectPlugIn() = default;
INamespaceProvider::~INamespaceProvider() = default;

}  // namespace kv

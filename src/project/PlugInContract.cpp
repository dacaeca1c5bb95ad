// The plug-in interfaces' type information lives here, once, in the host: plug-in libraries
// resolve it from the program that loads them.
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/INamespaceProvider.h"

namespace kv {

IKVProjectPlugIn::~IKVProjectPlugIn() = default;
INamespaceProvider::~INamespaceProvider() = default;

}  // namespace kv

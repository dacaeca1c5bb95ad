// The folders whose contents a build never deletes.
#pragma once

#include <string_view>

namespace kv {

// True for "/" itself, the system's top folders (/bin, /etc, /usr, ...) and anything below them,
// and the user's home folder itself (not the folders inside it).
bool IsProtectedFolder(std::string_view Folder);

}  // namespace kv

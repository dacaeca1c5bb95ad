// Where the installation keeps its own files (page templates, icons, sounds, animations).
#pragma once

#include <string>

namespace kv {

// The configuration folder, with a trailing "/": $KAVREL_CONFIG_DIR when set, else the folder
// the program was installed with, else (not installed yet) the build tree's
// configuration folder: the source tree's, with the plug-ins built there.
std::string ConfigurationFolder();

}  // namespace kv

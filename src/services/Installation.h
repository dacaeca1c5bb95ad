// Where the installation keeps its files.
#pragma once

#include <string>

namespace kv {

// The configuration folder, without a trailing "/": the environment variable KAVREL_CONFIG_DIR
// when it is set and not empty, otherwise the folder chosen when the program was built.
std::string ConfigurationFolder();

}  // namespace kv

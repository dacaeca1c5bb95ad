// Where the parser keeps what it can reuse between builds: $XDG_CACHE_HOME/kavrel, else
// ~/.cache/kavrel; empty when neither is set, and then nothing is kept.
#pragma once

#include <string>

namespace kv::cpp {

std::string CacheFolder();

}  // namespace kv::cpp

// Where the parser keeps what it can reuse between builds: $XDG_CACHE_HOME/kavrel, else
// ~/.cache/kavrel; empty when neither is set, and then nothing is kept.
#pragma once

#include <chrono>
#include <string>

namespace kv::cpp {

std::string CacheFolder();

// Removes what the parser kept in `folder` and has not used for 30 days (by the later of the
// times a file was read and written, as the file system tells them), and what a build that was
// stopped left half written a day ago. Other files stay.
void PruneCacheFolder(const std::string& folder,
                      std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

}  // namespace kv::cpp

// Bringing a project file of any earlier version up to the current format.
#pragma once

#include <ostream>
#include <string>

namespace kv {

// Loads `projectFile` without asking anything, writes every message it raised to `messages`, one
// per line, and saves the project in the current format: in place (keeping the old file as
// ".bak") when `targetFile` is empty, else under `targetFile` with its names relative to that new
// place (an existing target is kept as ".bak"; the old file is left alone). Returns 0 on success,
// 1 when the file could not be loaded at all, 2 when it could not be saved.
int UpgradeProjectFile(const std::string& projectFile, const std::string& targetFile, std::ostream& messages);

}  // namespace kv

// The C++ standard library, precompiled for each language standard when Kavrel is built and
// installed in the folder "kvcpp" beside the plug-in. Reading the library's headers, and the
// templates they make the compiler instantiate, is most of the work of parsing a small tree of
// C++ headers; with the library precompiled, a first build parses little more than the tree's own
// headers. It comes in two parts: its core, the headers that interfaces commonly include, and the
// whole library. A unit loads the core unless a documented file includes a library header outside
// it; the whole library costs its size in memory, read in full by libclang. A library whose
// headers changed since it was made is not loaded: after an upgrade of them the parser goes
// without until Kavrel is built again.
#pragma once

#include <string>
#include <vector>

namespace kv::cpp {

enum class LibraryPart { Core, Whole };

// The precompiled library in `folder` that a unit compiled with `arguments` can load, for the
// files `documented`: C++ of a standard that was precompiled, with no forced includes and no
// defines of reserved names (which the library's headers may test). Empty when there is none.
std::string StandardLibraryFor(const std::string& folder, const std::vector<std::string>& arguments,
                               const std::vector<std::string>& documented);

// Precompiles a part of the library for `standard` into `folder`; `text` stands for the part's
// own include directives when it is given. Returns why it failed; empty on success.
std::string PrecompileStandardLibrary(const std::string& folder, const std::string& standard, LibraryPart part,
                                      const std::string& text = {});

}  // namespace kv::cpp

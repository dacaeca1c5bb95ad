// Precompiles the C++ standard library for the kv.cpp plug-in, its core and the whole of it, once
// for each language standard named, into the folder beside the plug-in where the parser looks.
//
// Usage: kvcpp-precompile FOLDER STANDARD...
#include <cstdio>

#include "StandardLibrary.h"

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: %s FOLDER STANDARD...\n", argv[0]);
    return 2;
  }
  for (int i = 2; i < argc; ++i) {
    for (const auto part : {kv::cpp::LibraryPart::Core, kv::cpp::LibraryPart::Whole}) {
      const std::string problem = kv::cpp::PrecompileStandardLibrary(argv[1], argv[i], part);
      // A library that does not compile costs speed, not the build: the parser goes without it.
      if (!problem.empty())
        std::fprintf(stderr, "kvcpp-precompile: warning: the standard library of %s was not precompiled: %s\n", argv[i],
                     problem.c_str());
    }
  }
  return 0;
}

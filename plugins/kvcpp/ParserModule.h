// Where the parser lives. The plug-in's library does not link libclang: its parser module
// ("kvcpp-parser.so", in the folder "kvcpp" beside the plug-in, with the precompiled standard
// libraries) does, and is loaded the first time declarations have to be parsed. A program that
// links the parser in, as the tests do, uses its own.
#pragma once

#include <string>

#include "ParserInterface.h"

namespace kv::cpp {

struct ParserModule {
  const ParserFunctions* Functions = nullptr;
  std::string Error;  // why it could not be loaded
};

// The file of the plug-in's library, or of the program that links the plug-in in.
std::string PlugInFile();

// The folder "kvcpp" beside the plug-in's library; empty when the plug-in does not run from a
// shared library.
std::string ParserFolder();

// The file that holds the parser, loaded or not; empty when there is none.
std::string ParserModuleFile();

// Loads the parser once; later calls give the same answer.
ParserModule LoadParser();

}  // namespace kv::cpp

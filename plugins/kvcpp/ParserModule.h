// The file of the program or shared library that the parser's code runs in: the plug-in's library
// when Kavrel loads it, the test program in the tests.
#pragma once

#include <string>

namespace kv::cpp {

// Empty when the system cannot tell.
std::string ParserModuleFile();

}  // namespace kv::cpp

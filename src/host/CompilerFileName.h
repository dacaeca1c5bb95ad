// Where the help compilers are: the user's settings first, then a command the machine-wide
// settings name, then the HTML Help compiler on PATH.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The compiler of HTML Help ("HHCPath", `IsHHC`) or of the WinHelp stub ("HCRTFPath"): the user
// setting when it names an existing file; else the default value of `RegKeyString` among the
// machine-wide settings, cut at its first "%" (where the command's arguments begin), unquoted and
// trimmed, when it names an existing file; else, for HTML Help, chmcmd found on PATH. "" when
// none is found.
std::string GetCompilerFileName(std::string_view RegKeyString, bool IsHHC);

}  // namespace kv

namespace kv {

// The Help 2 compiler command the user setting "HXCompPath" names, when that file exists; there
// is no Help 2 compiler on this platform otherwise. "" when none.
std::string Help2CompilerFileName();

}  // namespace kv

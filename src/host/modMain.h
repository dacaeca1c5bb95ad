// General helpers of the library: settings, paths, time and colour texts, folder deletion,
// relative file names, tree paths, regular expressions and the probes for sibling products.
// `Root` publishes most of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kavrel/Object.h"
#include "kavrel/Variant.h"

namespace kv {

class FileSystem;
class TreeView;

// ---- Settings (see Settings.h for where they live)

// The key path of the user settings: "Software\Velmora\Kavrel5".
std::string RegKeyPath();
// The user value under RegKeyPath, or RegKeyPath + "\" + ExtraPath; `DefaultValue` when it is
// absent or empty (the two cannot be told apart).
std::string GetAppValue(std::string_view ValueName, std::string_view DefaultValue = {},
                        std::string_view ExtraPath = {});
// Stores a user value, creating the key as needed.
void SetAppValue(std::string_view ValueName, std::string_view Value, std::string_view ExtraPath = {});
// A machine-wide value under `KeyPath` (empty: RegKeyPath), with the same default rule.
std::string GetMachineValue(std::string_view ValueName, std::string_view DefaultValue = {},
                            std::string_view KeyPath = {});

// ---- General helpers

// The folder that "%SYS32%" stands for in stored names: the system library folder.
inline constexpr std::string_view SystemLibraryFolder = "/usr/lib";
// Replaces each "%SYS32%" (exactly that case) by SystemLibraryFolder.
std::string ReplaceSystemPath(std::string_view FileName);

// "n seconds" below a minute, else "m minutes" and, if seconds are left, " s seconds".
std::string ElapsedTime(DateTime t1, DateTime t2);

// "#RRGGBB" of a colour with red in the lowest byte; higher bits are dropped. A green below 16 is
// written as "0" + its decimal number, so green 10 to 15 gives three digits: green 11 alone is
// "#0001100". Stored texts depend on that.
std::string ColorToWebHex(std::int64_t Color);

// Deletes a folder with everything in it. On failure tells the user through the host's message
// handler and returns false. A folder that does not exist is nothing to delete.
bool DelTree32(std::string_view sPathToDel);

// The name of `FileName` relative to the folder of `RelativeTo` when it lies in that folder, below
// it or in a sibling folder ("../x/..."); otherwise its full path. The base of `FileName` is
// cleared on leaving.
std::string ToRelativeFileName(FileSystem& FileName, FileSystem& RelativeTo);
// The full path of `FileName` read against `RelativeTo` as base; the base is cleared again. A file
// object resolves a relative name when it is given, so this only changes names given while a base
// was set; stored names go through the overload below.
std::string FromRelativeFileNAme(FileSystem& FileName, FileSystem& RelativeTo);
// The full path of a stored name, relative (with "/" or "\") to the folder of `RelativeTo` or absolute.
std::string FromRelativeFileNAme(std::string_view FileName, FileSystem& RelativeTo);

// The keys of the selected node and its parents, from the root down, joined by "|".
std::string GetTreePath(const TreeView& Tree);
// Expands the nodes of a path made by GetTreePath as far as they exist and selects the last one.
void SetTreePath(TreeView& Tree, std::string_view Path);

bool IsXPSP2();  // always false here: no such platform
bool AreRegularExpressionsAvailable();
// Whether `Pattern`, a regular expression, matches somewhere in `Subject`; a pattern that does
// not compile fails with "Invalid procedure call or argument".
bool RegExpTest(std::string_view Subject, std::string_view Pattern, bool IgnoreCase);
// True when `SearchString` compiles (ignoring case, multi-line) and runs on a test text, and, when
// `ReplaceString` is not empty, a global replacement with it runs too.
bool IsValidRegularExpression(std::string_view SearchString, std::string_view ReplaceString = {});

// Whether the sibling authoring tool is installed, in its light, second or third version. Each is
// worked out once per process.
bool IsLumideskLiteInstalled();
bool IsLumidesk2Installed();
bool IsLumidesk3Installed();
bool IsLumideskInstalled();
// Forgets the cached answers (for tests and for hosts that install plug-ins at run time).
void ResetLumideskProbes();
// The sibling tool's project object of the newest installed version, loaded from `FileName`;
// nullptr when none can be made.
ObjectPtr GetLDProject(std::string_view FileName);

// True for the extensions "vb" and "vbproj", with or without the dot, ignoring case.
bool IsVBNETExtension(std::string_view Text);
// A generic type name without its arity suffix: "List`1" gives "List".
std::string RemoveGenericSuffix(std::string_view Name);
bool InIDE();                            // never: there is no development environment hosting the library
void LogMessage(std::string_view Text);  // a hook for diagnostics; does nothing

}  // namespace kv

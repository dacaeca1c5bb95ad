// Text expansion: the string tools of the template language and the expansion of the references
// that templates, scraps, phrases and comments hold.
//
//   %%name%%, %%name:key=value,key="a, value"%%   provider data, through a DataProvider
//   $$key$$                                       phrases
//   key=value,key=a value                         parameter lists
//
// Positions and lengths are 1-based and counted in UTF-16 code units unless said otherwise.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/StringCollection.h"

namespace kv {

class DataProvider;
class FileSystem;

namespace compare {
inline constexpr int BinaryCompare = 0;
inline constexpr int TextCompare = 1;  // ignores case
}  // namespace compare

// Position of `Seeking` in `Source` from `Start`, ignoring matches inside double quotes; 0 when
// there is none, or when the match lies in a string that is never closed. Quotes are counted
// from the start of `Source`, not from `Start`. `IgnoreCommentCharacter` has no effect.
long InStrEx(long Start, std::string_view Source, std::string_view Seeking, int CompareMode = compare::BinaryCompare,
             bool IgnoreCommentCharacter = false);

// Splits at each `Delimeter` outside double quotes. The text after the last delimiter becomes a
// part only when it is at least two characters long, or when there is no delimiter at all:
// "a,b" gives only "a", "a," gives only "a", "" gives one empty part.
std::vector<std::string> SplitEx(std::string_view Source, std::string_view Delimeter);

// Reads "key=value,key=\"a, value\"" into values keyed by name (trimmed, outer quotes removed).
// Parts without "=" are ignored; the first of several equal names wins.
StringCollection GetParameters(std::string_view Source);

// Expands %%name%% and %%name:params%% references in one pass; values are not scanned again.
// A plain name goes to `GetProperty`, or with `AlwaysUseProvideData` to `ProvideData` with
// "Type" = name; a name with parameters always goes to `ProvideData`. A value that begins
// "!UNCRECOGNISED" keeps the reference as written. %%ReplaceInQuotes:Value=False%% makes the rest
// of the text skip references inside double quotes. A failure gives only
// "!ERROR <number>.<step> IN PARSEFORPROVIDERPROPERTIES!".
std::string InternalParseForProviderProperties(std::string_view Text, DataProvider& DDP,
                                               std::shared_ptr<FileSystem>& FileSystemObject, bool AlwaysUseProvideData,
                                               bool ReplaceInQuotes);
std::string InternalParseForProviderProperties(std::string_view Text, DataProvider& DDP, bool AlwaysUseProvideData,
                                               bool ReplaceInQuotes);

std::string ParseForProviderProperties(std::string_view Text, DataProvider& DDP,
                                       std::shared_ptr<FileSystem>& FileSystemObject);
std::string ParseForProviderProperties(std::string_view Text, DataProvider& DDP);
// The same with every plain name going to `ProvideData`.
std::string ParseForProviderPropertiesEx(std::string_view Text, DataProvider& DDP,
                                         std::shared_ptr<FileSystem>& FileSystemObject);
std::string ParseForProviderPropertiesEx(std::string_view Text, DataProvider& DDP);
// The same as ParseForProviderProperties for a large text held by the caller.
std::string ParseForProviderProperties2(const std::string& Text, DataProvider& DDP,
                                        std::shared_ptr<FileSystem>& FileSystemObject);

// Appends to a buffer that is kept longer than its content (padded with blanks), so that a long
// text does not cost a copy per piece. `OutputPointer` is the number of bytes in use; the
// content is `OutputBuffer.substr(0, OutputPointer)`.
void AppendString(std::string& OutputBuffer, std::string_view NewText, long& OutputPointer);

// The text of phrase `key`, or nothing when there is no such phrase.
using PhraseLookup = std::function<std::optional<std::string>(std::string_view key)>;

// One pass over `Text` replacing Delimeter + key + Delimeter by the phrase; unknown keys stay as
// written.
std::string ParseForPhrases(std::string_view Text, const PhraseLookup& Phrases, std::string_view Delimeter = "$$");
// Up to three passes, stopping when no delimiter is left; a text without it comes back unchanged.
std::string ParseForPhrasesEx(std::string_view Text, const PhraseLookup& Phrases, std::string_view Delimeter = "$$");
// The same pass as ParseForPhrases, taking the values from a keyed collection.
std::string ParseForParameters(std::string_view Text, const StringCollection& Parameters, std::string_view Delimeter);

// Removes one leading and one trailing double quote, each when present.
std::string StripQuotes(std::string_view Source);
// Removes markup: text between "<" and the next ">" goes, CR LF becomes a blank, "&nbsp;" a
// blank and "&quot;" a double quote (ignoring case).
std::string StripTags(std::string_view Source);
// The items in order, separated by `Delimeter`.
std::string CollectionToString(const StringCollection& col, std::string_view Delimeter);

// Text that a page takes as it stands: its "%" are written "/%", which the parser turns back
// into "%" once no reference can be read into them.
std::string ProtectPercent(std::string_view text);

}  // namespace kv

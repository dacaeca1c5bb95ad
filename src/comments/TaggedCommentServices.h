// The services every comment feature stands on: adding a comment to an item's collection by the
// rules of its kind, joining texts by wrap type, finding a comment, reading the text a page asks
// for, following retired tag identifiers to the kind that replaces them, rebuilding an item's
// description from its comments and the skeleton of a comment file. `Root` publishes them.
//
// Comments are in the internal form: an HTML fragment with "<crlf>" for a line break inside a
// comment, "<p>" paragraphs from wrap type 3, and "<xmlisland>" around raw XML.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "kavrel/Object.h"
#include "kavrel/TaggedCommentDef.h"
#include "kavrel/XmlDocument.h"
#include "kavrel/model/ItemList.h"
#include "kavrel/model/Parameter.h"
#include "kavrel/model/TaggedComments.h"

namespace kv::comments {

// Adds `tc` to `col`. A kind whose flags hold "h" merges its entries into the comment already
// under its key (the tag identifier; in a buffer with a qualifier, "tag:qualifier"), unless the
// caller preserves them or the kind stays unmerged in buffers; every other kind stands side by
// side, unkeyed. "##EXCLUDE" excludes the comment's item. Outside a buffer the buffer mark drops.
void AddTaggedComment(TaggedComments& col, const TaggedCommentPtr& tc, bool IsBuffer = false,
                      bool PreserveOriginalTaggedComments = false);

// Joins `NewText` to `Description`: wrap type 2 by "<crlf>", 3 as a "<p>" paragraph (unless the
// text starts one), any other by a blank. An empty `NewText` becomes one blank, so that a later
// join still sees a separator. Both arguments take the result; two empty texts give "".
std::string AppendDescription(std::string& Description, std::string& NewText, long WrapType = 0);

// The first comment in collection order whose tag identifier is `TagIdentifier` (ignoring case),
// or nullptr; nullptr for a missing collection too.
TaggedCommentPtr FindTaggedComment(const TaggedComments* col, std::string_view TagIdentifier);
// The first parameter named `Name` (ignoring case), or nullptr.
std::shared_ptr<Parameter> GetParameter(const ItemVector<Parameter>* colP, std::string_view Name);

// The definition that stands for `TagIdentifier`: the identifier's own, followed through
// `UpgradedTagIdentifier` until a definition has none, has `UpgradeStop` or names an identifier
// that is not defined (the last one reached is the answer). nullptr only when `TagIdentifier`
// itself is not defined.
std::shared_ptr<TaggedCommentDef> UpgradeTaggedComment(std::string_view TagIdentifier, const TaggedCommentDefs* Defs);

// Turns the image tags of a comment into those of the output; the project gives it when its
// additional files contain images.
using ImageTagCheck = std::function<std::string(const std::string& text)>;

// The text of `obj`'s comments that `IDs` names (one tag identifier or several joined by ","),
// each identifier upgraded first and each kind's text taken once, joined with nothing between,
// with "<br>" for "<crlf>". "" when `obj` has no comments. `VerifyIMGTags`, when given, checks
// texts that hold an "<img " tag.
std::string GetTaggedCommentEx(const ObjectPtr& obj, std::string_view IDs, const TaggedCommentDefs* Defs,
                               const ImageTagCheck& VerifyIMGTags);
inline std::string GetTaggedComment(const ObjectPtr& obj, std::string_view IDs, const TaggedCommentDefs* Defs) {
  return GetTaggedCommentEx(obj, IDs, Defs, nullptr);
}

// Rebuilds `TaggedDescription` (or, on kinds without it, `Description`) of `item` from the texts
// of its comments whose kind appends to the description; with `Recurse` the item's parameters,
// members, a component's members and a project's components too.
void UpdateObjectDescription(const ObjectPtr& item, bool Recurse = false);

// A new comment file for an item of doc type `ItemType` named by `Moniker`.
XMLDocument CreateStandardCommentFile(std::string_view ItemType, std::string_view Moniker);

// Whether the item has comments: its own cheap answer, else a look at its collection.
bool ItemHasTaggedComments(const ObjectPtr& item);
// Whether `obj` is of a kind that carries comments.
bool SupportsTaggedComments(const ObjectPtr& obj);
// Whether the item is a collection class: marked as one, or carrying "##MODULE_IS_COLLECTION".
bool IsItemCollection(const ObjectPtr& item);

}  // namespace kv::comments

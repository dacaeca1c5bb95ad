// The small services templates and plug-ins render pieces of a page with: headings and
// paragraphs, the format parameters of a tag, the source of an item, its examples, enumerations
// by name, and the editable span of the design view.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "kavrel/Object.h"
#include "kavrel/ParserElement.h"
#include "kavrel/model/Component.h"
#include "kavrel/model/Example.h"
#include "kavrel/model/vbProject.h"

namespace kv::blocks {

// "<p><b>" text "</b></p>".
std::string Heading(std::string_view Text);
// "<h1>" text "</h1>".
std::string PageHeading(std::string_view Text);
// "<p>" text "</p>" and a line break ("\r\n").
std::string Paragraph(std::string_view Text);

// The tag's "format" (or "blankformat") parameter, or `Default` when it is absent or empty.
std::string GetFormat(const ParserElement& e, std::string_view Default);
std::string GetBlankFormat(const ParserElement& e, std::string_view Default);

// A block's source as a coloured code block, in the language its component's source file tells.
std::string BlockSourceHtml(const Block& b, bool highlighted, long wrapLength);
// The source of an item as HTML: a block's code; for a property, a paragraph of each of its get,
// let and set accessors that exists; for a component, its blocks but the declarations section,
// each followed by "\r\n<BR>&nbsp;\r\n" unless it is the component's last block (so a
// declarations section at the end leaves the separator behind the block before it). Anything
// else, and no item, gives "".
std::string SourceCode(const ObjectPtr& I, long wrapLength);

// A block kept out of pages: excluded or hidden, or with a reason of exclusion.
bool IsExcludedBlock(const Block& b);

// The examples of `obj`: those its model holds, then one for each piece (between "<crlf>") of
// each example comment ("##EXAMPLECODE", "##MODULE_EXAMPLECODE") not taken before. A comment is
// marked taken ("P") so that a second call does not bring its examples again. Examples from
// comments read relative files from `projectFolder`.
std::shared_ptr<Examples> GetExamples(const ObjectPtr& obj, std::string_view projectFolder);

// The enumeration `Name` as seen from `InComponent` of `project`. "Project.Name" looks in that
// project of the project's group (whatever kind of item the name finds there); a plain name
// looks in `project` and counts only an enumeration. A member whose scope is not "PUBLIC" is
// found only with `IncludePrivate`. nullptr when nothing fits.
ItemPtr GetEnumeration(const vbProject& project, const Component* InComponent, std::string_view Name,
                       bool IncludePrivate);

// `Source` trimmed, without the paragraph tag around it. Only the two ends are looked at: a text
// of two paragraphs loses the opening of the first and the closing of the last.
std::string StripFirstPara(std::string_view Source);

// The editable area of the design view for the comment `TagIdentifier` of `Item`, whose span id
// "TaggedComment|" qualified name "|" tag tells the design view which comment it edits.
std::string CommentEditSpan(const Object& Item, std::string_view TagIdentifier, std::string_view Caption,
                            std::string_view EditableSpanPrefix, std::string_view EditableSpanSuffix);

}  // namespace kv::blocks

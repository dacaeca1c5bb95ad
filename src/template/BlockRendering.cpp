#include "template/BlockRendering.h"

#include "kavrel/Failure.h"
#include "kavrel/Text.h"
#include "kavrel/model/VBProjectGroup.h"
#include "template/CodeRendering.h"
#include "template/TextExpansion.h"

namespace kv::blocks {

namespace {

constexpr std::string_view kBlockSeparator = "\r\n<BR>&nbsp;\r\n";

std::string parameterOr(const ParserElement& e, std::string_view name, std::string_view Default) {
  const std::string* value = e.Parameters().Find(name);
  return value && !value->empty() ? *value : std::string(Default);
}

bool isExampleComment(const TaggedComment& c) {
  return text::equalsIgnoreCase(c.TagIdentifier(), "##MODULE_EXAMPLECODE") ||
         text::equalsIgnoreCase(c.TagIdentifier(), "##EXAMPLECODE");
}

void addModelExamples(const ObjectPtr& obj, Examples& into) {
  try {
    auto own = std::dynamic_pointer_cast<Examples>(obj->get("Examples").toObject());
    if (!own || own->Count() == 0) return;
    for (const auto& e : *own) into.Add(e);
  } catch (const Failure&) {
    // A kind without examples.
  }
}

void addCommentExamples(const Item& item, std::string_view projectFolder, Examples& into) {
  if (!item.HasTaggedComments()) return;
  for (const TaggedCommentPtr& c : item.TaggedComments()) {
    if (!isExampleComment(*c) || c->ExampleSourceType() == "P") continue;
    c->ExampleSourceType("P");
    std::string id;
    if (const auto parent = c->Parent()) id = parent->QualifiedName() + "|" + c->TagIdentifier();
    const std::string& description = c->Description();
    const std::vector<std::string> pieces =
        InStrEx(1, description, "<crlf>") > 0 ? SplitEx(description, "<crlf>") : std::vector{description};
    for (const std::string& piece : pieces) {
      if (piece.empty()) continue;
      auto e = std::make_shared<Example>();
      e->Code = piece;
      e->Language = c->Qualifier();
      e->Item = item.QualifiedName();
      e->TaggedCommentID = id;
      e->BaseFolder = projectFolder;
      e->FromComment = true;
      into.Add(std::move(e));
    }
  }
}

ItemPtr lookUp(const vbProject& project, const Component* from, std::string_view name) {
  if (from)
    if (ItemPtr found = from->FindMember(name)) return found;
  return project.GetObjectByName(name);
}

bool isPublic(const ItemPtr& item) {
  const auto* member = dynamic_cast<const ComponentMember*>(item.get());
  return member && member->Scope() == "PUBLIC";
}

}  // namespace

std::string Heading(std::string_view Text) {
  return "<p><b>" + std::string(Text) + "</b></p>";
}

std::string PageHeading(std::string_view Text) {
  return "<h1>" + std::string(Text) + "</h1>";
}

std::string Paragraph(std::string_view Text) {
  return "<p>" + std::string(Text) + "</p>\r\n";
}

std::string GetFormat(const ParserElement& e, std::string_view Default) {
  return parameterOr(e, "format", Default);
}

std::string GetBlankFormat(const ParserElement& e, std::string_view Default) {
  return parameterOr(e, "blankformat", Default);
}

std::string BlockSourceHtml(const Block& b, bool highlighted, long wrapLength) {
  std::string sourceFile;
  if (const auto component = b.OwningComponent()) sourceFile = component->SourceFileName();
  return CodeBlockHtml(b.SourceText(), CodeHighlighter::LanguageDefinition({}, sourceFile), highlighted, wrapLength);
}

std::string SourceCode(const ObjectPtr& I, long wrapLength) {
  if (!I) return {};
  if (const auto* block = dynamic_cast<const Block*>(I.get())) return BlockSourceHtml(*block, true, wrapLength);
  if (const auto* property = dynamic_cast<const PropertyGroup*>(I.get())) {
    std::string out;
    for (const auto& accessor :
         {property->PropertyGetBlock(), property->PropertyLetBlock(), property->PropertySetBlock()})
      if (accessor) out += Paragraph(SourceCode(accessor, wrapLength));
    return out;
  }
  if (const auto* component = dynamic_cast<const Component*>(I.get())) {
    std::string out;
    const auto& list = component->Blocks();
    for (std::size_t i = 0; i < list.size(); ++i) {
      if (list[i]->BlockType() == BlockType::Declarations) continue;
      out += BlockSourceHtml(*list[i], true, wrapLength);
      if (i + 1 < list.size()) out += kBlockSeparator;
    }
    return out;
  }
  return {};
}

bool IsExcludedBlock(const Block& b) {
  return b.ExcludeFlag() || b.HiddenFlag() || !b.ExclusionText().empty();
}

std::shared_ptr<Examples> GetExamples(const ObjectPtr& obj, std::string_view projectFolder) {
  auto result = std::make_shared<Examples>();
  if (!obj) return result;
  addModelExamples(obj, *result);
  if (const auto* item = dynamic_cast<const Item*>(obj.get())) addCommentExamples(*item, projectFolder, *result);
  return result;
}

ItemPtr GetEnumeration(const vbProject& project, const Component* InComponent, std::string_view Name,
                       bool IncludePrivate) {
  ItemPtr found;
  if (const std::size_t dot = Name.find('.'); dot != std::string_view::npos) {
    const std::string projectName = text::toLower(Name.substr(0, dot));
    const auto assemblies = project.Assemblies();
    const auto group = assemblies ? assemblies->Group() : nullptr;
    if (!group) return nullptr;
    std::shared_ptr<vbProject> other;
    for (const auto& p : group->Projects())
      if (text::toLower(p->Name()) == projectName) other = p;
    if (!other) return nullptr;
    const Component* from = InComponent && InComponent->vbProject() == other ? InComponent : nullptr;
    found = lookUp(*other, from, Name.substr(dot + 1));
  } else {
    found = lookUp(project, InComponent, Name);
    if (found && found->typeName() != "Enumeration") found = nullptr;
  }
  if (!found || !(IncludePrivate || isPublic(found))) return nullptr;
  return found;
}

std::string StripFirstPara(std::string_view Source) {
  if (Source.empty()) return {};
  const std::string s = text::trim(Source);
  const long length = text::length(s);
  if (text::startsWithIgnoreCase(s, "<p>") && text::endsWithIgnoreCase(s, "</p>"))
    return text::mid(s, 4, std::max(0L, length - 7));
  if (text::startsWithIgnoreCase(s, "<p ")) {
    const long close = InStrEx(4, s, ">", compare::TextCompare);
    // This end is compared as written: "</P>" after attributes keeps the paragraph.
    if (close > 0 && s.ends_with("</p>")) return text::mid(s, close + 1, std::max(0L, length - close - 4));
  }
  return s;
}

std::string CommentEditSpan(const Object& Item, std::string_view TagIdentifier, std::string_view Caption,
                            std::string_view EditableSpanPrefix, std::string_view EditableSpanSuffix) {
  return std::string(EditableSpanPrefix) + std::string(Caption) +
         "</span></div><div><span class=\"kveditwrapper\" style=\"width: 100%\" CONTENTEDITABLE "
         "id=\"TaggedComment|" +
         Item.get("QualifiedName").toString() + "|" + std::string(TagIdentifier) + "\"></span></div>" +
         std::string(EditableSpanSuffix);
}

}  // namespace kv::blocks

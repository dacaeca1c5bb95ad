#include "template/ExampleRendering.h"

#include "files/EscapeText.h"
#include "kavrel/FileSystem.h"
#include "template/CodeRendering.h"

namespace kv {

namespace {

std::string exampleFile(const Example& e, std::string_view baseFolder) {
  if (e.FileName.empty() || e.FileName.front() == '/') return e.FileName;
  const std::string base(baseFolder.empty() ? std::string_view(e.BaseFolder) : baseFolder);
  return base.empty() ? e.FileName : withTrailingSlash(base) + e.FileName;
}

std::string title(const Example& e) {
  if (!e.Title.empty()) return EscapeText(e.Title);
  if (!e.Caption.empty()) return e.Caption;  // comment text, already markup
  if (e.FileName.empty()) return {};
  FileSystem file(e.FileName);
  return EscapeText(file.Name());
}

std::string codeHtml(const Example& e, std::string_view baseFolder, long wrapLength) {
  std::string code;
  if (!e.Code.empty()) {
    code = e.FromComment ? CommentTextToCode(e.Code) : e.Code;
  } else if (!e.FileName.empty()) {
    FileSystem file(exampleFile(e, baseFolder));
    if (!file.Exists()) return "!EXAMPLE FILE NOT FOUND '" + EscapeText(file.FileName()) + "'!";
    code = file.ReadAll();
  }
  const std::string definition = CodeHighlighter::LanguageDefinition(e.Language, e.FileName);
  return CodeBlockHtml(code, definition, e.Highlight, wrapLength);
}

}  // namespace

std::string ExampleHtml(const Example& e, std::string_view baseFolder, bool wrapInDivAndTable, long wrapLength) {
  const std::string code = codeHtml(e, baseFolder, wrapLength);
  if (!wrapInDivAndTable) return code;
  std::string out = "<div class=\"kvexample\"><table class=\"kvexample\">";
  if (const std::string head = title(e); !head.empty()) out += "<tr><th>" + head + "</th></tr>";
  return out + "<tr><td>" + code + "</td></tr></table></div>";
}

}  // namespace kv

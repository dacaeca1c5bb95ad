#include "CppParser.h"

#include <filesystem>
#include <set>

#include "ParseCache.h"
#include "ParserModule.h"

namespace kv::cpp {
namespace fs = std::filesystem;

std::vector<std::string> CompilerArguments(const CppInput& input, const std::vector<std::string>& files) {
  std::vector<std::string> args{"-x", input.IsC() ? "c" : "c++"};
  if (!input.Standard.empty()) args.push_back("-std=" + input.Standard);
  // Every error is reported; none stops the unit.
  args.push_back("-ferror-limit=0");
  args.push_back("-Wno-pragma-once-outside-header");
  if (input.PlainComments) args.push_back("-fparse-all-comments");
  for (const auto& folder : input.IncludeFolders) args.push_back("-I" + folder);
  // The folders the user named are include folders too, and their parents: headers include their
  // neighbours, or name them with the library's folder ("mylib/other.h").
  std::set<std::string> folders;
  for (const auto& source : input.Sources) {
    std::error_code ec;
    if (!fs::is_directory(source, ec)) continue;
    const fs::path folder = fs::path(source).lexically_normal();
    folders.insert(folder.string());
    const fs::path parent = (folder.has_filename() ? folder : folder.parent_path()).parent_path();
    if (!parent.empty()) folders.insert(parent.string());
  }
  for (const auto& file : files) folders.insert(fs::path(file).parent_path().string());
  for (const auto& folder : folders) args.push_back("-I" + folder);
  for (const auto& define : input.Defines) args.push_back("-D" + define);
  if (!input.CompileCommands.empty())
    if (const ParserFunctions* parser = LoadParser().Functions)
      for (auto& flag : parser->CompileCommandFlags(input.CompileCommands)) args.push_back(std::move(flag));
  return args;
}

ParseResult Parse(const CppInput& input, const std::string& standardLibraryFolder) {
  ParseResult result;
  result.Global = std::make_unique<Declaration>();
  std::vector<std::string> problems;
  result.Files = ExpandSources(input, problems);
  for (auto& problem : problems) result.Diagnostics.push_back({{}, 0, std::move(problem)});
  const std::vector<std::string> arguments = CompilerArguments(input, result.Files);
  const ParseCache parsed(arguments, input.PlainComments, result.Files);
  if (std::optional<ParseResult> cached = parsed.Load()) {
    // Problems with the inputs are told again; the files' own warnings come from the cache.
    cached->Diagnostics.insert(cached->Diagnostics.begin(), std::make_move_iterator(result.Diagnostics.begin()),
                               std::make_move_iterator(result.Diagnostics.end()));
    return std::move(*cached);
  }
  const size_t inputProblems = result.Diagnostics.size();

  const ParserModule parser = LoadParser();
  if (!parser.Functions) {
    result.Diagnostics.push_back({{}, 0, "the C++ parser could not be loaded: " + parser.Error});
    return result;
  }
  ParseRequest request;
  for (const auto& file : result.Files) (IsSourceFile(file) ? request.Sources : request.Headers).push_back(file);
  request.Arguments = arguments;
  request.C = input.IsC();
  request.PlainComments = input.PlainComments;
  request.ParsedBefore = parsed.Kept();
  request.StandardLibraryFolder = standardLibraryFolder;
  ParsedFiles files = parser.Functions->ParseFiles(request);
  result.Global = std::move(files.Global);
  for (auto& d : files.Diagnostics) result.Diagnostics.push_back(std::move(d));
  if (files.ReadKnown) {
    // Kept without the input problems, which are found again before the cache is read.
    ParseResult kept;
    kept.Global = std::move(result.Global);
    kept.Files = result.Files;
    kept.Diagnostics.assign(result.Diagnostics.begin() + long(inputProblems), result.Diagnostics.end());
    parsed.Save(kept, files.Read);
    result.Global = std::move(kept.Global);
  }
  return result;
}

}  // namespace kv::cpp

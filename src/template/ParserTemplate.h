// A page layout, loaded once and rendered for many items. A layout is any text file (HTML, a
// help project file, a table of contents) with data tags in it:
//
//   <kv:data type="variable" name="itemname" />
//
// Load reads the layout and compiles it into literal runs, %%name%% references and tags; each
// render then walks that list and asks the bound data provider for every tag and reference.
// The tag syntax is described in docs/templates.md.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/ParserElement.h"

namespace kv {

class DataProvider;
class FileSystem;

class ParserTemplate {
 public:
  // The tag result that adds no text.
  static constexpr std::string_view Discard = "{Discard}";

  std::shared_ptr<kv::DataProvider> DataProvider() const { return mDataProvider; }
  void DataProvider(std::shared_ptr<kv::DataProvider> provider) { mDataProvider = std::move(provider); }

  // The texts that open and close the markers of the page metadata block. They take effect at
  // the next Load.
  void MetaEndClose(std::string_view text) { mMetaEndClose = text; }
  void MetaEndOpen(std::string_view text) { mMetaEndOpen = text; }
  void MetaStartClose(std::string_view text) { mMetaStartClose = text; }
  void MetaStartOpen(std::string_view text) { mMetaStartOpen = text; }

  // Reads and compiles a layout file. A missing file leaves the template empty.
  void Load(std::string_view path);
  // Compiles a layout held in memory.
  void LoadText(std::string_view layout);
  // Turns this layout into the refresh of `page`, an earlier output of it: everything of the
  // page outside its metadata blocks stays as it is, and each block of the page is rendered
  // anew from the layout's block in the same place (the first from the first, ...). Blocks of
  // the page that the layout lacks stay as they are; a page without blocks stays whole.
  void RefreshFrom(std::string_view page);
  // The tag formatting errors of the last load, one per line with its line number; empty when none.
  std::string LoadErrors() const;

  // Renders into the open output file. A tag may write to the file or replace it; the caller's
  // pointer follows such a replacement.
  void ParseTo(std::shared_ptr<FileSystem>& output);
  // Renders into a string; tags see no output file.
  std::string ParseToString();

  // Leaves the metadata markers out of the output; the text between them stays.
  void StripMetaData(bool on) { mStripMetaData = on; }
  // The code page of the output; the output file converts to it.
  void OutputCodePage(long codePage) { mOutputCodePage = codePage; }
  long OutputCodePage() const { return mOutputCodePage; }

 private:
  struct Node {
    enum class Kind : unsigned char { Text, Marker, Property, Reference, Tag };
    Kind kind = Kind::Text;
    std::string text;  // the literal or marker text, or the name of a reference
    ParserElement element;
  };
  struct CompileState;
  using Flush = void (*)(std::shared_ptr<FileSystem>& file, std::string& pending);

  void compileText(std::string_view text, CompileState& state);
  std::size_t compileTag(std::string_view layout, std::size_t start, CompileState& state, ParserElement& element);
  void render(std::shared_ptr<FileSystem>& file, std::string& out, Flush flush);

  std::shared_ptr<kv::DataProvider> mDataProvider;
  std::string mMetaStartOpen, mMetaStartClose, mMetaEndOpen, mMetaEndClose;
  bool mStripMetaData = false;
  long mOutputCodePage = 65001;
  std::vector<Node> mNodes;
  std::vector<std::string> mLoadErrors;
};

}  // namespace kv

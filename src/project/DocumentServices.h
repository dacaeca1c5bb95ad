// The HTML documents a build uses to clean HTML in comments: documents made from a body or from
// a whole page, a cache of documents to reuse, and the check of the images comments show.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "files/HtmlDocument.h"

namespace kv {

class KVProject;

class DocumentServices {
 public:
  explicit DocumentServices(KVProject& project) : mProject(project) {}

  // A document holding `BodyHTML` as its body, its base the project's output folder, taken from
  // the cache when one is there.
  std::shared_ptr<HtmlDocument> NewDOM(std::string_view BodyHTML);
  // A document of a whole page.
  std::shared_ptr<HtmlDocument> CreateDOM(std::string_view HTML);
  // Gives a document back for NewDOM to reuse.
  void RecycleDOM(std::shared_ptr<HtmlDocument> DOM);
  // Points every image of `Text` whose file is one of the project's additional files at that
  // file's name alone, as the file lies in the output folder. Returns the body written out again
  // when an image changed, `Text` itself otherwise.
  std::string VerifyIMGTags(const std::string& Text);

 private:
  KVProject& mProject;
  std::vector<std::shared_ptr<HtmlDocument>> mDOMCache;
};

}  // namespace kv

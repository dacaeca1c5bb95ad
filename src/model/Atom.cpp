#include "kavrel/model/Atom.h"

#include <mutex>
#include <unordered_set>

namespace kv {

namespace {

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view s) const noexcept { return std::hash<std::string_view>()(s); }
};

// Never shrinks: atoms hand out pointers into it for the life of the process.
struct AtomTable {
  std::mutex lock;
  std::unordered_set<std::string, TextHash, std::equal_to<>> texts;
};

AtomTable& table() {
  static AtomTable* t = new AtomTable;  // outlives every static that holds atoms
  return *t;
}

}  // namespace

Atom::Atom(std::string_view text) {
  if (text.empty()) return;
  AtomTable& t = table();
  std::lock_guard guard(t.lock);
  auto it = t.texts.find(text);
  if (it == t.texts.end()) it = t.texts.emplace(text).first;
  mText = &*it;
}

const std::string& Atom::emptyText() {
  static const std::string none;
  return none;
}

std::size_t Atom::count() {
  AtomTable& t = table();
  std::lock_guard guard(t.lock);
  return t.texts.size();
}

}  // namespace kv

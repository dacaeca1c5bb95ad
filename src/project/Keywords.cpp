#include "project/Keywords.h"

#include "kavrel/Failure.h"
#include "kavrel/Text.h"
#include "project/SortableCollection.h"

namespace kv {

Variant Keyword::get(std::string_view member) const {
  if (text::equalsIgnoreCase(member, "Name")) return Variant(Name);
  if (text::equalsIgnoreCase(member, "HasChildKeywords")) return Variant(HasChildKeywords());
  if (text::equalsIgnoreCase(member, "JumpCount")) return Variant(std::int64_t(Jumps.size()));
  memberMissing(member);
}

Keywords& Keyword::ChildKeywords() {
  if (!mChildKeywords) mChildKeywords = std::make_unique<Keywords>();
  return *mChildKeywords;
}

bool Keyword::HasChildKeywords() const {
  return mChildKeywords && mChildKeywords->Count() > 0;
}

void Keyword::AddJump(const std::string& Target) {
  Jumps.push_back(KeywordJump{Name, Target});
}

std::shared_ptr<Keyword> Keyword::AddSubKeyword(const std::string& Source, const std::string& Target) {
  return ChildKeywords().AddSimpleKeyword(Source, Target);
}

void Keyword::Sort() {
  if (mChildKeywords) mChildKeywords->Sort();
}

const std::shared_ptr<Keyword>* Keywords::Find(std::string_view Key) const {
  const auto it = mByName.find(text::toLower(Key));
  return it == mByName.end() ? nullptr : &it->second;
}

const std::shared_ptr<Keyword>& Keywords::Item(long Index) const {
  if (Index < 1 || Index > Count()) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
  return mKeywords[size_t(Index - 1)];
}

const std::shared_ptr<Keyword>& Keywords::Item(std::string_view Key) const {
  if (const auto* found = Find(Key)) return *found;
  throw Failure(err::InvalidProcedureCall, "No keyword '" + std::string(Key) + "'");
}

bool Keywords::Exists(std::string_view Key) const {
  return Find(Key) != nullptr;
}

void Keywords::Add(std::shared_ptr<Keyword> keyword) {
  if (!mByName.emplace(text::toLower(keyword->Name), keyword).second)
    throw Failure(err::KeyAlreadyExists, "This key is already associated with an element of this collection");
  mKeywords.push_back(std::move(keyword));
}

void Keywords::Remove(long Index) {
  mByName.erase(text::toLower(Item(Index)->Name));
  mKeywords.erase(mKeywords.begin() + (Index - 1));
}

std::shared_ptr<Keyword> Keywords::AddSimpleKeyword(const std::string& Name, const std::string& Target) {
  std::shared_ptr<Keyword> keyword;
  if (const auto* found = Find(Name)) {
    keyword = *found;
  } else {
    keyword = std::make_shared<Keyword>(Name);
    // An empty name cannot be a key: such a keyword is handed back but not stored.
    if (!Name.empty()) Add(keyword);
  }
  if (!Target.empty()) keyword->AddJump(Target);
  return keyword;
}

std::shared_ptr<Keyword> Keywords::AddHierarchicalKeyword(const std::string& Source, const std::string& Target) {
  const auto parts = text::split(Source, ",");
  if (parts.empty()) return nullptr;
  if (parts[0].empty()) {
    const std::string rest = text::trim(Source.substr(Source.find(',') + 1));
    if (rest.find(',') != std::string::npos) return AddHierarchicalKeyword(rest, Target);
    return rest.empty() ? nullptr : AddSimpleKeyword(rest, Target);
  }
  auto top = AddSimpleKeyword(parts[0], "");
  auto level = top;
  for (size_t i = 1; i < parts.size(); ++i) {
    const std::string part = text::trim(parts[i]);
    if (part.empty()) continue;
    // Only the last level leads to the page; the levels above it group.
    level = level->AddSubKeyword(part, i + 1 == parts.size() ? Target : std::string());
  }
  return top;
}

void Keywords::Sort() {
  SortableCollection<std::shared_ptr<Keyword>> sorted;
  for (const auto& keyword : mKeywords) {
    keyword->Sort();
    sorted.Add(keyword, keyword->Name);
  }
  mKeywords.assign(sorted.begin(), sorted.end());
}

}  // namespace kv

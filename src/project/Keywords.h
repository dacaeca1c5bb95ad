// The keyword stores of a build: what page layouts and comments file under index terms, gathered
// while pages are written and written out later as the keyword index and the link tables of the
// help file. A keyword has jumps (the pages it leads to) and may have sub-keywords.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kavrel/Object.h"

namespace kv {

class Keywords;

struct KeywordJump {
  std::string Name;
  std::string Target;
};

class Keyword : public Object {
 public:
  explicit Keyword(std::string Name) : Name(std::move(Name)) {}
  std::string typeName() const override { return "Keyword"; }
  // Late-bound members for the scraps that write an index: Name, HasChildKeywords, JumpCount.
  Variant get(std::string_view member) const override;

  std::string Name;
  std::vector<KeywordJump> Jumps;

  // The sub-keywords, made on first use.
  Keywords& ChildKeywords();
  bool HasChildKeywords() const;
  void AddJump(const std::string& Target);
  // Finds or adds the sub-keyword `Source`, with a jump to `Target` when one is given.
  std::shared_ptr<Keyword> AddSubKeyword(const std::string& Source, const std::string& Target = {});
  void Sort();

 private:
  std::unique_ptr<Keywords> mChildKeywords;
};

// Keywords keyed by name (ignoring case), sorted on demand. Every page adds its keywords, so a
// name is found through a hash of its folded form, not by a walk through the store.
class Keywords {
 public:
  long Count() const { return long(mKeywords.size()); }
  // The keyword at a 1-based position; fails for a bad position.
  const std::shared_ptr<Keyword>& Item(long Index) const;
  // The keyword of that name; fails when there is none.
  const std::shared_ptr<Keyword>& Item(std::string_view Key) const;
  bool Exists(std::string_view Key) const;
  // Adds a keyword; fails when one of that name is there.
  void Add(std::shared_ptr<Keyword> keyword);
  void Remove(long Index);

  // Finds or adds the keyword `Name`, with a jump to `Target` when one is given.
  std::shared_ptr<Keyword> AddSimpleKeyword(const std::string& Name, const std::string& Target);
  // "Top, Sub, Leaf": a keyword per level, the jump on the last. An empty first level is
  // skipped: ",Sub" files under "Sub".
  std::shared_ptr<Keyword> AddHierarchicalKeyword(const std::string& Source, const std::string& Target);
  // Sorts by name, ignoring case, each keyword's sub-keywords first.
  void Sort();

  auto begin() const { return mKeywords.begin(); }
  auto end() const { return mKeywords.end(); }

 private:
  const std::shared_ptr<Keyword>* Find(std::string_view Key) const;

  std::vector<std::shared_ptr<Keyword>> mKeywords;
  std::unordered_map<std::string, std::shared_ptr<Keyword>> mByName;  // folded name -> keyword
};

}  // namespace kv

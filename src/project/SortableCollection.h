// A list kept in the order of its sort keys (compared ignoring case), found by a binary search.
// Keys that compare equal keep no particular order among themselves: a new one lands before or
// after its equals depending on the path of the search, and both are kept.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "kavrel/Object.h"
#include "kavrel/Text.h"

namespace kv {

namespace detail {
// The name of an item, for an empty sort key: late-bound for objects, `Name` for records.
template <class T>
std::string sortNameOf(const T& item) {
  if constexpr (std::is_convertible_v<T, ObjectPtr>) {
    try {
      return getOr(item, "Name").toString();
    } catch (...) {
      return {};
    }
  } else if constexpr (requires { item->Name; }) {
    return item ? std::string(item->Name) : std::string();
  } else {
    return {};
  }
}

inline int compareText(std::string_view a, std::string_view b) {
  const text::LessIgnoreCase less;
  if (less(a, b)) return -1;
  return less(b, a) ? 1 : 0;
}
}  // namespace detail

template <class T = ObjectPtr>
class SortableCollection {
 public:
  bool SortEnabled() const { return mSortEnabled; }
  void SortEnabled(bool v) { mSortEnabled = v; }
  long Count() const { return long(mCol.size()); }

  // The item at a 1-based position, or an empty value for a bad position.
  T Item(long Index) const {
    if (Index < 1 || Index > Count()) return T{};
    return mCol[size_t(Index - 1)];
  }
  const std::string& SortKey(long Index) const { return mKeys.at(size_t(Index - 1)); }

  void Add(T Item, std::string SortKey = {}) {
    if (mCol.empty() || !mSortEnabled) {
      mCol.push_back(std::move(Item));
      mKeys.push_back(std::move(SortKey));
      return;
    }
    if (SortKey.empty()) SortKey = detail::sortNameOf(Item);
    const long after = Search(SortKey);
    mCol.insert(mCol.begin() + after, std::move(Item));
    mKeys.insert(mKeys.begin() + after, std::move(SortKey));
  }

  // Removes the item at a 1-based position.
  void Remove(long Key) {
    if (Key < 1 || Key > Count()) return;
    mCol.erase(mCol.begin() + (Key - 1));
    mKeys.erase(mKeys.begin() + (Key - 1));
  }

  // The position after which `Text` belongs; 0 for the very front.
  long Search(std::string_view Text) const {
    if (mKeys.empty()) return 0;
    auto key = [&](long position) -> std::string_view { return mKeys[size_t(position - 1)]; };
    long intMax = Count(), intMin = 1;
    long intPointer = intMax / 2;
    if (intPointer == 0) intPointer = 1;
    for (;;) {
      if (detail::compareText(Text, key(intPointer)) > 0) {
        intMin = intPointer;
        intPointer = intMin + (intMax - intMin) / 2;
        if (intMax - intPointer < 2) {
          if (detail::compareText(Text, key(intMax)) >= 0) return intMax;
          if (detail::compareText(Text, key(intPointer)) >= 0) return intPointer;
        }
      } else {
        intMax = intPointer;
        intPointer = intMin + (intMax - intMin) / 2;
        if (intPointer - intMin < 2) {
          if (detail::compareText(Text, key(intMin)) <= 0) return intMin - 1;
          if (detail::compareText(Text, key(intPointer)) <= 0) return intPointer - 1;
        }
      }
    }
  }

  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

 private:
  bool mSortEnabled = true;
  std::vector<T> mCol;
  std::vector<std::string> mKeys;
};

}  // namespace kv

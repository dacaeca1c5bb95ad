#include "contracts/StringCollection.h"

#include <algorithm>

#include "contracts/Failure.h"
#include "services/Text.h"

namespace kv {

void StringCollection::Add(std::string value) {
  mEntries.push_back({std::string(), std::move(value), false});
}

void StringCollection::Add(std::string value, std::string key) {
  if (Contains(key))
    throw Failure(err::KeyAlreadyExists, "This key is already associated with an element of this collection");
  mEntries.push_back({std::move(key), std::move(value), true});
}

const std::string* StringCollection::Find(std::string_view key) const {
  for (const Entry& e : mEntries) {
    if (e.keyed && text::equalsIgnoreCase(e.key, key)) return &e.value;
  }
  return nullptr;
}

std::string* StringCollection::Find(std::string_view key) {
  return const_cast<std::string*>(static_cast<const StringCollection*>(this)->Find(key));
}

const std::string& StringCollection::Item(std::string_view key) const {
  if (const std::string* v = Find(key)) return *v;
  throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument: no item '" + std::string(key) + "'");
}

const std::string& StringCollection::Item(long index) const {
  if (index < 1 || index > Count()) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
  return mEntries[static_cast<size_t>(index - 1)].value;
}

void StringCollection::Remove(std::string_view key) {
  auto it = std::find_if(mEntries.begin(), mEntries.end(),
                         [&](const Entry& e) { return e.keyed && text::equalsIgnoreCase(e.key, key); });
  if (it == mEntries.end()) throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument");
  mEntries.erase(it);
}

}  // namespace kv

// One tag of a page layout: its kind and its parameters, whose names ignore case. The template
// parser makes one for each data tag it meets, and text expansion makes one for each
// %%name:key=value%% reference.
#pragma once

#include <string>
#include <string_view>

#include "kavrel/Export.h"
#include "kavrel/StringCollection.h"

namespace kv {

class KV_API ParserElement {
 public:
  // The kind of a data tag, the only kind a data provider answers.
  static constexpr long DataTag = 2;

  ParserElement() = default;
  explicit ParserElement(long elementType) : mElementType(elementType) {}

  long ElementType() const { return mElementType; }
  void ElementType(long elementType) { mElementType = elementType; }

  const StringCollection& Parameters() const { return mParameters; }
  StringCollection& Parameters() { return mParameters; }
  void Parameters(StringCollection parameters) { mParameters = std::move(parameters); }

  bool HasParameter(std::string_view name) const { return mParameters.Exists(name); }
  // Value first, as callers write it. A name that is already present keeps its first value.
  void AddParameter(std::string value, std::string name);

 private:
  long mElementType = 0;
  StringCollection mParameters;
};

}  // namespace kv

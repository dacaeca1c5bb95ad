#include "kavrel/ParserElement.h"

namespace kv {

void ParserElement::AddParameter(std::string value, std::string name) {
  if (!mParameters.Exists(name)) mParameters.Add(std::move(value), std::move(name));
}

}  // namespace kv

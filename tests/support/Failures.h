// The number of the failure a piece of code raises, for tests that expect one.
#pragma once

#include <string>

#include "kavrel/Failure.h"

namespace kv::test {

// The failure number `body` raises, or 0 when it runs through; `message` receives the description.
template <class F>
long failureNumber(F&& body, std::string* message = nullptr) {
  try {
    body();
  } catch (const Failure& failure) {
    if (message) *message = failure.what();
    return failure.number();
  }
  return 0;
}

}  // namespace kv::test

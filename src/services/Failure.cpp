#include "kavrel/Failure.h"

#include <new>

namespace kv {

Failure::Failure(long number, const std::string& description, std::source_location where)
    : std::runtime_error(description), mNumber(number), mWhere(where) {}

Failure ObjectNotSet(std::source_location where) {
  return Failure(err::ObjectVariableNotSet, "Object variable or With block variable not set", where);
}

long currentFailureNumber() {
  try {
    throw;
  } catch (const Failure& f) {
    return f.number();
  } catch (const std::bad_alloc&) {
    return err::OutOfMemory;
  } catch (...) {
    return err::AutomationError;
  }
}

}  // namespace kv

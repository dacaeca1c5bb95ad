// Run-time failures of the object model. A failure carries a number (the classic error numbers
// that plug-ins and hosts already know) and a description, and remembers where it was raised so
// that the central failure handler can name the procedure and line.
#pragma once

#include <source_location>
#include <stdexcept>
#include <string>

#include "kavrel/Export.h"

namespace kv {

namespace err {
inline constexpr long InvalidProcedureCall = 5;
inline constexpr long Overflow = 6;
inline constexpr long OutOfMemory = 7;
inline constexpr long SubscriptOutOfRange = 9;
inline constexpr long TypeMismatch = 13;
inline constexpr long BadFileNameOrNumber = 52;
inline constexpr long FileNotFound = 53;
inline constexpr long FileAlreadyOpen = 55;
inline constexpr long DeviceIOError = 57;
inline constexpr long DiskFull = 61;
inline constexpr long PermissionDenied = 70;
inline constexpr long PathFileAccessError = 75;
inline constexpr long PathNotFound = 76;
inline constexpr long ObjectVariableNotSet = 91;
inline constexpr long InvalidUseOfNull = 94;
inline constexpr long ObjectRequired = 424;
inline constexpr long CantCreateObject = 429;
inline constexpr long MemberNotSupported = 438;
inline constexpr long AutomationError = 440;
inline constexpr long ArgumentNotOptional = 449;
inline constexpr long KeyAlreadyExists = 457;
}  // namespace err

class KV_API Failure : public std::runtime_error {
 public:
  Failure(long number, const std::string& description, std::source_location where = std::source_location::current());

  long number() const noexcept { return mNumber; }
  const std::source_location& where() const noexcept { return mWhere; }

 private:
  long mNumber;
  std::source_location mWhere;
};

// The failure of using an object that is not there (number 91).
KV_API Failure ObjectNotSet(std::source_location where = std::source_location::current());

// The number of the exception being handled (call inside a catch block): a failure's own number,
// OutOfMemory for exhausted memory, AutomationError for anything else.
KV_API long currentFailureNumber();

}  // namespace kv

// The variable dump of a failure report: the values of a procedure's locals, its object's fields
// and its parameters as XML text, so that a report shows the state the failure met.
//
//   bool Project::Save(const std::string& fileName) {
//     int written = 0;
//     return guard<bool>("KVProject", Variables().local("written", written).field("mDirty", mDirty)
//                                                .parameter("fileName", fileName),
//                        [&] { ... });
//   }
//
// Values are read when the report is made, through references: name only variables that outlive
// the guarded body (parameters, fields, locals declared before the guard).
#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "host/FailureHandler.h"
#include "kavrel/Variant.h"

namespace kv {

// The most characters of one text, and the most elements of one array, that a dump shows.
inline constexpr long DumpLimit = 99;
// Arrays with more nested levels than this are not dumped element by element.
inline constexpr int DumpedDimensions = 3;

namespace dumpdetail {

template <class T>
concept StringLike = std::convertible_to<const T&, std::string_view>;
template <class T>
concept Range = std::ranges::range<const T> && !StringLike<T>;

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {};
template <class T>
struct IsOwningPointer : std::false_type {};
template <class T>
struct IsOwningPointer<std::shared_ptr<T>> : std::true_type {};
template <class T, class D>
struct IsOwningPointer<std::unique_ptr<T, D>> : std::true_type {};
template <class T>
struct IsWeakPointer : std::false_type {};
template <class T>
struct IsWeakPointer<std::weak_ptr<T>> : std::true_type {};

template <class T>
constexpr int rank() {
  if constexpr (Range<T>) {
    return 1 + rank<std::remove_cvref_t<std::ranges::range_value_t<const T>>>();
  } else {
    return 0;
  }
}

std::string escape(std::string_view text);
// Escaped text, cut at `limit` characters with a leading "{Dump truncated at ...}".
std::string textValue(std::string_view text, long limit);
std::string variantValue(const Variant& value, long limit);
std::string doubleValue(double value);
std::string recordValue(const std::type_info& type);
std::string uninitialisedArray(int dimension);
std::string truncatedArray(long limit);
std::string tooManyDimensions(int dimensions);
std::string elementStart(long index);
inline constexpr std::string_view ElementEnd = "</Element>";

}  // namespace dumpdetail

// The dump text of one value: the content of its element, XML special characters escaped.
template <class T>
std::string dumpValue(const T& value, long limit = DumpLimit);

namespace dumpdetail {

template <class T>
std::string arrayValue(const T& range, long limit, int dimension) {
  const auto size = std::ranges::distance(range);
  if (size == 0) return uninitialisedArray(dimension);
  std::string out = size > limit ? truncatedArray(limit) : std::string();
  long index = 0;
  for (const auto& element : range) {
    if (index >= limit) break;
    out += elementStart(index++);
    if constexpr (Range<std::remove_cvref_t<decltype(element)>>) {
      out += arrayValue(element, limit, dimension + 1);
    } else {
      out += dumpValue(element, limit);
    }
    out += ElementEnd;
  }
  return out;
}

}  // namespace dumpdetail

template <class T>
std::string dumpValue(const T& value, long limit) {
  using namespace dumpdetail;
  if constexpr (std::is_same_v<T, Variant>) {
    return variantValue(value, limit);
  } else if constexpr (std::is_same_v<T, bool>) {
    return value ? "True" : "False";
  } else if constexpr (std::is_integral_v<T>) {
    return std::to_string(value);
  } else if constexpr (std::is_floating_point_v<T>) {
    return doubleValue(double(value));
  } else if constexpr (std::is_enum_v<T>) {
    return std::to_string(std::underlying_type_t<T>(value));
  } else if constexpr (std::is_same_v<T, DateTime>) {
    return variantValue(Variant(value), limit);
  } else if constexpr (std::is_pointer_v<T> && StringLike<T>) {
    return value ? textValue(value, limit) : "{Nothing}";
  } else if constexpr (StringLike<T>) {
    return textValue(std::string_view(value), limit);
  } else if constexpr (IsOptional<T>::value) {
    return value ? dumpValue(*value, limit) : "{Empty}";
  } else if constexpr (IsOwningPointer<T>::value || std::is_pointer_v<T>) {
    return value ? "{DataObject}" : "{Nothing}";
  } else if constexpr (IsWeakPointer<T>::value) {
    return value.expired() ? "{Nothing}" : "{DataObject}";
  } else if constexpr (Range<T>) {
    if constexpr (rank<T>() > DumpedDimensions) {
      return tooManyDimensions(rank<T>());
    } else {
      return arrayValue(value, limit, 1);
    }
  } else {
    return recordValue(typeid(T));
  }
}

// The variables of one procedure, by block, in the order they are added.
class Variables {
 public:
  enum class Block { Local, Field, Parameter };
  // Makes the dump text of a value; may fail, which the dump shows in place of the value.
  using Formatter = std::function<std::string(long limit)>;

  template <class T>
  Variables& local(std::string name, const T& value) {
    return add(Block::Local, std::move(name), reference(value));
  }
  template <class T>
  Variables& field(std::string name, const T& value) {
    return add(Block::Field, std::move(name), reference(value));
  }
  template <class T>
  Variables& parameter(std::string name, const T& value) {
    return add(Block::Parameter, std::move(name), reference(value));
  }
  // Temporaries would be gone by the time a report reads them.
  template <class T>
  Variables& local(std::string, const T&&) = delete;
  template <class T>
  Variables& field(std::string, const T&&) = delete;
  template <class T>
  Variables& parameter(std::string, const T&&) = delete;

  Variables& add(Block block, std::string name, Formatter formatter);

  // The dump: "<Variables>", the locals, the fields, the (disabled) globals, "</Variables>", then
  // the parameters, with CR LF between the blocks. Each variable is an element named after it.
  std::string text(long limit = DumpLimit) const;

 private:
  template <class T>
  static Formatter reference(const T& value) {
    return [&value](long limit) { return dumpValue(value, limit); };
  }

  struct Entry {
    Block block;
    std::string name;
    Formatter formatter;
  };
  std::vector<Entry> mEntries;
};

// `guard` with the variables that a failure report shows.
template <class R = void, class F>
R guard(std::string_view module, const Variables& variables, F&& body,
        std::source_location where = std::source_location::current()) {
  return guard<R>(module, std::forward<F>(body), where, [&variables] { return variables.text(); });
}

}  // namespace kv

#pragma once
#include <cstddef>

/// Storage of fixed size.
/// @tparam T what is stored
/// @tparam N how many
template <typename T, std::size_t N = 4>
class Buffer {
 public:
  /// Stores @p value at @p index.
  template <class U>
  void put(std::size_t index, U&& value);
  T& at(std::size_t index);
};

template <typename T>
class Buffer<T*, 1> {
 public:
  T* only;
};

struct Base {};
struct Mixin {};

/// Derived from two bases.
template <typename T>
struct Derived : public Base, protected virtual Mixin {};

template <typename T>
using BufferOf = Buffer<T, 8>;

/// Makes a buffer.
template <typename T, typename... Args>
Buffer<T> make(Args&&... args);

void take(Buffer<int> buffer);
void take(Buffer<char> buffer);

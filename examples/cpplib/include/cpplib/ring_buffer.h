// A fixed-size queue that overwrites its oldest element when full.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace cpplib {

/**
 * A queue of at most @p N elements in one block of memory.
 *
 * Pushing onto a full buffer drops the oldest element, so the buffer always holds the latest
 * @p N values: what a log of recent events or a moving average needs.
 *
 * @tparam T the element type; default constructible
 * @tparam N the capacity, at least 1
 */
template <typename T, std::size_t N = 16>
class RingBuffer {
  static_assert(N > 0, "a ring buffer holds at least one element");

 public:
  using value_type = T;
  using size_type = std::size_t;

  /// Appends @p value, dropping the oldest element when the buffer is full.
  /// @return true when an element was dropped
  bool push(const T& value);
  /// @copydoc push(const T&)
  bool push(T&& value);

  /// Removes and returns the oldest element.
  /// @return nothing when the buffer is empty
  std::optional<T> pop();

  /// The element at @p index, counted from the oldest.
  /// @warning The index is not checked.
  T& operator[](size_type index);
  /// @copydoc operator[](size_type)
  const T& operator[](size_type index) const;

  size_type size() const noexcept { return mCount; }
  /// Whether it holds nothing.
  [[nodiscard]] bool empty() const noexcept { return mCount == 0; }
  static constexpr size_type capacity() noexcept { return N; }

 private:
  std::array<T, N> mItems{};
  size_type mFirst = 0;
  size_type mCount = 0;
};

/// The mean of the elements of @p buffer.
/// @deprecated Use a running sum instead; this walks the whole buffer.
template <typename T, std::size_t N>
double mean(const RingBuffer<T, N>& buffer);

}  // namespace cpplib

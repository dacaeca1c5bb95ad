#pragma once

/// Triple-slash summary.
///
/// Details in a second paragraph.
/// @param a the first value
/// @param[in] b the second value
/// @return the sum of @p a and @p b
int slashes(int a, int b);

//! Exclamation summary.
//! \note Mind the gap.
//! \see slashes
void exclamation();

/**
 * Javadoc summary.
 *
 * Example:
 * @code
 *   if (x < 1)
 *     stars();
 * @endcode
 * @deprecated Use slashes instead.
 */
void stars();

/*!
 * \brief Qt-style summary.
 * \tparam T the element type
 * \returns nothing at all
 */
template <typename T>
void qtStyle(T value);

// A plain comment that documents only when asked.
void plain();

int undocumented();

/// A documented field holder.
struct Holder {
  int count;  ///< How many there are.
  /// The name.
  const char* name;
};

/// The largest of two values.
#define KV_MAX(a, b) ((a) > (b) ? (a) : (b))

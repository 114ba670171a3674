// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_WRAPPING_HPP
#define QEL_CORE_INTERNAL_WRAPPING_HPP

// Integer arithmetic modulo 2^width without signed overflow.
//
// Signed overflow is undefined in C++; unsigned arithmetic wraps. Each operation runs in the unsigned type of the
// promoted operand and casts back, which gives the bits of a two's complement processor.

#include <qel/core/internal/narrowed.hpp>

#include <type_traits>

namespace qel {

namespace internal {

/// The type that `a * b` has for two operands of type T, and its unsigned twin.
template <typename T>
using promoted_t = decltype(T() * T());
template <typename T>
using unsigned_promoted_t = std::make_unsigned_t<promoted_t<T>>;

/// `a - b` modulo 2^(width of T).
template <typename T>
constexpr T wrapping_sub(T a, T b) {
  static_assert(std::is_integral_v<T>, "wrapping_sub: an integer type is needed");
  using U = unsigned_promoted_t<T>;
  return narrowed<T>(static_cast<U>(a) - static_cast<U>(b));
}

/// `a - b`: modulo 2^(width of T) for integers, rounded for floating point.
template <typename T>
constexpr T difference(T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return wrapping_sub(a, b);
  else
    return a - b;
}

/// `a * a` in the type that T promotes to, modulo 2^(width of that type). The square of the `unsigned short` 65535 is
/// computed in `int`, and is negative.
template <typename T>
constexpr promoted_t<T> wrapping_square(T a) {
  static_assert(std::is_integral_v<T>, "wrapping_square: an integer type is needed");
  using U = unsigned_promoted_t<T>;
  return static_cast<promoted_t<T>>(static_cast<U>(a) * static_cast<U>(a));
}

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_WRAPPING_HPP

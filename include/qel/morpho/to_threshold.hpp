// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TO_THRESHOLD_HPP
#define QEL_MORPHO_TO_THRESHOLD_HPP

// Hosts and command lines give every threshold as a double. A plain cast of a double that does not fit is undefined and
// differs between processors; here the range is tested first, for the same results everywhere. A NaN fails each test.

#include <qel/core/internal/narrowed.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace qel {

namespace morpho {

namespace internal {

/// The low 32 bits of `number` truncated to 64 bits: wrap-round is meant, so -1.0 gives 4294967295. 0 for a NaN, an
/// infinity or a number outside 64 bits.
constexpr std::uint32_t low_bits_of_truncated(double number) {
  constexpr double limit = 9223372036854775808.0;  // 2^63
  const bool fits = number >= -limit && number < limit;
  return fits ? qel::internal::narrowed<std::uint32_t>(static_cast<std::int64_t>(number)) : 0;
}

/// `number` rounded to the nearest float, ties to even; an infinity if it is too large, a NaN for a NaN.
///
/// The cast is undefined beyond the largest float. The next float, had the exponent room for it, would be 2^128. Below
/// the midpoint 2^128 - 2^103 the nearest float is still the largest one; the midpoint is a tie whose even neighbour is
/// 2^128, that is, infinity.
constexpr float rounded_to_float(double number) {
  constexpr float largest = std::numeric_limits<float>::max();
  constexpr float infinity = std::numeric_limits<float>::infinity();
  constexpr double midpoint = 0x1.ffffffp127;
  if (number > double{largest}) return number < midpoint ? largest : infinity;
  if (number < -double{largest}) return number > -midpoint ? -largest : -infinity;
  return qel::internal::narrowed<float>(number);
}

}  // namespace internal

/// A threshold as a value of the attribute's result type L: `std::uint32_t` (area), `double` or `float`.
template <typename L>
constexpr L to_threshold(double number);

/// An area: the low 32 bits of the number truncated, 0 for what 64 bits do not hold.
template <>
constexpr std::uint32_t to_threshold<std::uint32_t>(double number) {
  return internal::low_bits_of_truncated(number);
}

/// A length: the number as it is.
template <>
constexpr double to_threshold<double>(double number) {
  return number;
}

/// A moment or deviation: the nearest float.
template <>
constexpr float to_threshold<float>(double number) {
  return internal::rounded_to_float(number);
}

/// Numbers as thresholds, in their order. \throws std::bad_alloc
template <typename L>
std::vector<L> to_thresholds(const double* numbers, std::size_t count) {
  std::vector<L> thresholds(count);
  std::transform(numbers, numbers + count, thresholds.begin(), to_threshold<L>);
  return thresholds;
}

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TO_THRESHOLD_HPP

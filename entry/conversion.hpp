// SPDX-License-Identifier: MIT
#ifndef ENTRY_CONVERSION_HPP
#define ENTRY_CONVERSION_HPP

// The host gives every number as a double. A plain cast of one that does not fit is undefined and differs between
// processors; here the range is tested first, and a NaN fails every test. Thresholds: see qel/morpho/to_threshold.hpp.

#include <cstdint>
#include <limits>

namespace entry {

/// `number` truncated toward zero; the most negative value for a NaN, an infinity or what exceeds 32 bits.
constexpr std::int32_t to_int32(double number) {
  const bool fits = number > -2147483649.0 && number < 2147483648.0;
  return fits ? static_cast<std::int32_t>(number) : std::numeric_limits<std::int32_t>::min();
}

}  // namespace entry

#endif  // ENTRY_CONVERSION_HPP

// SPDX-License-Identifier: MIT

// Thresholds as `float`; calls test the other conversions.

#include <gtest/gtest.h>
#include <qel/morpho/to_threshold.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

/// The C library's correctly rounded reading of the exact text of the number.
float nearest_float(double number) {
  char digits[64];
  static_cast<void>(std::snprintf(digits, sizeof digits, "%a", number));
  return std::strtof(digits, nullptr);
}

TEST(to_threshold, float_is_the_nearest_float_up_to_infinity) {
  constexpr double largest = std::numeric_limits<float>::max();
  constexpr double midpoint = 0x1.ffffffp127;  // between the largest float and the next one, were there one
  for (const double magnitude : {0.0, 0.1, 2.5, 0x1p-149, 0x1p-150, 0x1.8p-149, 16777217.0, 16777219.0, 1e38, largest,
                                 std::nextafter(largest, inf), std::nextafter(midpoint, 0), midpoint,
                                 std::nextafter(midpoint, inf), 0x1p128, 1e300, inf})
    for (const double number : {magnitude, -magnitude})
      EXPECT_EQ(qel::morpho::to_threshold<float>(number), nearest_float(number)) << number;
  EXPECT_TRUE(std::isnan(qel::morpho::to_threshold<float>(std::nan(""))));
}

}  // namespace

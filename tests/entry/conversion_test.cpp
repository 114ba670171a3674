// SPDX-License-Identifier: MIT
#include "entry/conversion.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(conversion, to_int32_truncates_and_gives_the_least_value_for_what_does_not_fit) {
  constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
  for (const auto& [number, expected] : {std::pair{4.9, 4},
                                         {-4.9, -4},
                                         {-0.5, 0},
                                         {2147483647.9, 2147483647},
                                         {-2147483648.9, least},
                                         {2147483648.0, least},
                                         {-2147483649.0, least},
                                         {4294967300.0, least},
                                         {1e300, least},
                                         {inf, least},
                                         {-inf, least},
                                         {nan, least}})
    EXPECT_EQ(entry::to_int32(number), expected) << number;
}

TEST(conversion, area_threshold_is_the_low_32_bits_of_the_truncated_number) {
  for (const auto& [number, expected] : {std::pair{3.9, 3u},
                                         {-0.5, 0u},
                                         {0.9, 0u},
                                         {-1.0, 4294967295u},
                                         {4294967295.0, 4294967295u},
                                         {4294967296.0, 0u},
                                         {4294967299.5, 3u},
                                         {-4294967297.0, 4294967295u},
                                         {0x1.fffffffffffffp62, 4294966272u},
                                         {-0x1p63, 0u},
                                         {0x1p63, 0u},
                                         {-0x1.0000000000001p63, 0u},
                                         {1e300, 0u},
                                         {inf, 0u},
                                         {-inf, 0u},
                                         {nan, 0u}})
    EXPECT_EQ(entry::to_threshold<std::uint32_t>(number), expected) << number;
}

/// The C library's correctly rounded reading of the number's exact text.
float nearest_float(double number) {
  char digits[64];
  static_cast<void>(std::snprintf(digits, sizeof digits, "%a", number));
  return std::strtof(digits, nullptr);
}

TEST(conversion, float_threshold_is_the_nearest_float_up_to_infinity) {
  constexpr double largest = std::numeric_limits<float>::max();
  constexpr double midpoint = 0x1.ffffffp127;  // between the largest float and the next one, were there one
  for (const double magnitude : {0.0, 0.1, 2.5, 0x1p-149, 0x1p-150, 0x1.8p-149, 16777217.0, 16777219.0, 1e38, largest,
                                 std::nextafter(largest, inf), std::nextafter(midpoint, 0), midpoint,
                                 std::nextafter(midpoint, inf), 0x1p128, 1e300, inf})
    for (const double number : {magnitude, -magnitude}) {
      EXPECT_EQ(entry::to_threshold<float>(number), nearest_float(number)) << number;
      EXPECT_EQ(entry::to_threshold<double>(number), number);
    }
  EXPECT_TRUE(std::isnan(entry::to_threshold<float>(nan)));
}

}  // namespace

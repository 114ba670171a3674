// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_VALUE_TYPES_HPP
#define TESTS_SUPPORT_VALUE_TYPES_HPP

// The eight value types of an image, listed once for every typed test:
//
//   TYPED_TEST_SUITE(my_suite, support::value_types, support::value_type_names);

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <type_traits>

namespace support {

using value_types =
    ::testing::Types<signed char, unsigned char, short, unsigned short, int, unsigned int, std::int64_t, std::uint64_t>;

/// Names a value type in the test output after its host class: int8, uint8, ... uint64.
struct value_type_names {
  template <typename T>
  static std::string GetName(int) {
    return (std::is_signed_v<T> ? "int" : "uint") + std::to_string(sizeof(T) * CHAR_BIT);
  }
};

}  // namespace support

#endif  // TESTS_SUPPORT_VALUE_TYPES_HPP

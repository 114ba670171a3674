// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_VALUE_TYPES_HPP
#define TESTS_SUPPORT_VALUE_TYPES_HPP

// The eight value types of an image for typed tests:
//
//   TYPED_TEST_SUITE(my_suite, support::value_types, support::value_type_names);

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <type_traits>

#include "tests/support/random_image.hpp"

namespace support {

using value_types = value_types_in<::testing::Types>;

/// Names a value type in the test output after its host class: int8, uint8, ... uint64, logical, double.
struct value_type_names {
  template <typename T>
  static std::string GetName(int) {
    if (!std::is_integral_v<T>) return "double";
    if (std::is_same_v<T, bool>) return "logical";
    return (std::is_signed_v<T> ? "int" : "uint") + std::to_string(sizeof(T) * CHAR_BIT);
  }
};

}  // namespace support

#endif  // TESTS_SUPPORT_VALUE_TYPES_HPP

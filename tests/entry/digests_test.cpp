// SPDX-License-Identifier: MIT

// The same bits everywhere: calls of all classes, attributes, connectivities and rules, on a picture and on noise,
// against one table for all compilers and processors, made on Linux on x86-64. Where results change on purpose, the
// environment variable WRITE_DIGESTS names a file that gets the lines of a new table.

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using support::matrix;

/// The digests by what tells the call, from the table's lines "class image attribute connectivity rule digest".
std::map<std::string, std::string> read_table() {
  std::ifstream file(DIGESTS_FOLDER "/digests.txt");
  std::map<std::string, std::string> table;
  for (std::string line; std::getline(file, line);)
    table[line.substr(0, line.rfind(' '))] = line.substr(line.rfind(' ') + 1);
  return table;
}

/// The bytes of the values, the least significant one of each first, weighted by their positions. Hosts that compute in
/// `double` get the same number: it stays below 2^53 for some millions of bytes.
template <typename T>
std::string digest(const std::vector<T>& values) {
  constexpr std::uint64_t prime = 65519;
  std::uint64_t sum = 0;
  std::uint64_t position = 0;
  for (const T v : values)
    for (std::size_t byte = 0; byte < sizeof(T); ++byte) {
      ++position;
      const std::uint64_t weight = position * position % prime * position % prime + 1;
      sum += weight * (static_cast<std::uint64_t>(v) >> 8 * byte & 0xff);
    }
  return std::to_string(sum);
}

/// The step between two grey levels of the picture: squares of the values do not overflow, but for 32 bits.
template <typename T>
constexpr std::int64_t step = sizeof(T) == 1   ? 1
                              : sizeof(T) == 2 ? 97
                              : sizeof(T) == 4 ? 1009
                                               : 5000011;

/// The first band of the picture of the user guide.
template <typename T>
matrix<T> picture() {
  std::ifstream file(DIGESTS_FOLDER "/coast.pgm", std::ios::binary);
  std::string magic;
  std::size_t cols = 0, rows = 0, greatest = 0;
  file >> magic >> cols >> rows >> greatest;
  file.get();
  matrix<T> result{rows, cols, std::vector<T>(rows * cols)};
  const int middle = std::is_signed_v<T> ? 128 : 0;
  for (T& v : result.values) v = static_cast<T>((file.get() - middle) * step<T>);
  EXPECT_TRUE(file) << DIGESTS_FOLDER;
  return result;
}

/// Any values of T; one in three is an extreme, 0 or 1. Other languages have this engine too, or make it in `double`.
template <typename T>
matrix<T> noise() {
  std::minstd_rand0 engine(11);
  std::vector<T> columns(37 * 61);
  for (T& v : columns) {
    const std::array<T, 4> special = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), T(0), T(1)};
    const std::size_t kind = engine() >> 23;
    std::uint64_t bits = 0;
    for (unsigned byte = 0; byte < 8; ++byte) bits |= std::uint64_t{engine() >> 23} << 8 * byte;
    v = kind < 84 ? special[kind % 4] : static_cast<T>(bits);
  }
  return support::from_column_major(37, 61, columns);
}

std::vector<double> thresholds(const std::string& attribute, double grey_level) {
  if (attribute == "area") return {10, 100, 1000};
  if (attribute == "diagonal") return {3, 12.5, 40};
  if (attribute == "inertia") return {0.15, 0.25, 0.5};
  return {3 * grey_level, 10 * grey_level, 30 * grey_level};
}

template <typename T>
struct digests : ::testing::Test {};
TYPED_TEST_SUITE(digests, support::value_types, support::value_type_names);

TYPED_TEST(digests, are_those_of_every_compiler_and_processor) {
  using T = TypeParam;
  static const std::map<std::string, std::string> table = read_table();
  const char* const new_table = std::getenv("WRITE_DIGESTS");
  for (const std::string name : {"coast", "noise"}) {
    const matrix<T> image = name == "coast" ? picture<T>() : noise<T>();
    const double grey_level = name == "coast" ? static_cast<double>(step<T>) : std::ldexp(1, 8 * sizeof(T) - 8);
    for (const char* const attribute : {"area", "diagonal", "inertia", "std"})
      for (const int connectivity : {4, 8})
        for (const char* const rule : {"min", "max", "direct", "sub"}) {
          const std::string call = support::value_type_names::GetName<T>(0) + ' ' + name + ' ' + attribute + ' ' +
                                   std::to_string(connectivity) + ' ' + rule;
          test_host::reset();
          const auto lambdas = thresholds(attribute, grey_level);
          const std::string found = digest(test_host::values<T>(test_host::call(
              {test_host::matrix(image.rows, image.cols, column_major(image)), test_host::text(attribute),
               test_host::matrix(1, lambdas.size(), lambdas),
               test_host::matrix<double>(1, 1, {static_cast<double>(connectivity)}), test_host::text(rule)})));
          if (new_table != nullptr) std::ofstream(new_table, std::ios::app) << call << ' ' << found << '\n';
          const auto line = table.find(call);
          EXPECT_EQ(line == table.end() ? "" : line->second, found) << call;
        }
  }
  test_host::reset();
}

}  // namespace

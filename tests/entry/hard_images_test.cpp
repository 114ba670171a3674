// SPDX-License-Identifier: MIT

// Images with deep trees, long thin regions or extreme values, by every attribute and rule. They need no stack of their
// size: this program runs with 512 kB.

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using support::flavour;

/// A value of an image by its row and column, cut to the image's type.
using value_at = std::function<std::size_t(std::size_t row, std::size_t col)>;

template <typename T>
support::matrix<T> filled(std::size_t rows, std::size_t cols, const value_at& value) {
  support::matrix<T> image{rows, cols, {}};
  for (std::size_t r = 0; r < rows; ++r)
    for (std::size_t c = 0; c < cols; ++c) image.values.push_back(static_cast<T>(value(r, c)));
  return image;
}

/// The hard images by name: those of one row or column at their greatest length, the others of n x n pixels.
template <typename T>
std::map<std::string, support::matrix<T>> hard_images(std::size_t n) {
  const auto snake = [n](std::size_t r, std::size_t c) { return r % 2 == 0 || c == (r % 4 == 1 ? n - 1 : 0); };
  support::random_engine engine(7);
  const auto least_or_greatest = [&](std::size_t, std::size_t) {
    return static_cast<std::size_t>(support::below(2, engine) == 0 ? std::numeric_limits<T>::min()
                                                                   : std::numeric_limits<T>::max());
  };
  return {{"rising row", filled<T>(1, 32765, [](std::size_t, std::size_t c) { return c; })},
          {"rising column", filled<T>(32765, 1, [](std::size_t r, std::size_t) { return r; })},
          {"serpentine", filled<T>(n, n, snake)},
          {"rising serpentine",
           filled<T>(n, n,
                     [&](std::size_t r, std::size_t c) { return snake(r, c) ? r * n + (r % 4 == 2 ? n - c : c) : 0; })},
          // Rings, each cut and joined to the next one but one.
          {"spiral", filled<T>(n, n,
                               [n](std::size_t r, std::size_t c) {
                                 const std::size_t ring = std::min({r, c, n - 1 - r, n - 1 - c});
                                 return (ring % 2 == 0) != (r == c + 1 && 2 * r < n);
                               })},
          {"comb", filled<T>(n, n, [n](std::size_t r, std::size_t c) { return c % 2 == 0 ? 1 + c : r == n - 1; })},
          {"extremes", filled<T>(n, n, least_or_greatest)},
          {"checkerboard", support::random_image<T>(n, n, flavour::checkerboard, engine)},
          {"constant", support::random_image<T>(n, n, flavour::constant, engine)},
          {"distinct values", support::random_image<T>(n, n, flavour::all_distinct, engine)}};
}

/// The planes of `image` in one block: both trees filtered at some threshold and at one that nothing reaches.
template <typename T>
std::vector<T> planes(const support::matrix<T>& image, const std::string& attribute, const std::string& rule) {
  static const std::map<std::string, std::vector<double>> thresholds = {
      {"a", {99, 4e9}}, {"d", {60, 4e9}}, {"i", {0.2, 4e9}}, {"s", {9, 1e30}}};
  test_host::reset();
  return test_host::values<T>(
      test_host::call({test_host::matrix<T>(image.rows, image.cols, column_major(image)), test_host::text(attribute),
                       test_host::matrix<double>(1, 2, thresholds.at(attribute)), test_host::matrix<double>(1, 1, {4}),
                       test_host::text(rule)}));
}

template <typename T>
struct hard_image : ::testing::Test {};
TYPED_TEST_SUITE(hard_image, support::value_types, support::value_type_names);

TYPED_TEST(hard_image, obeys_the_laws_of_profiles) {
  using T = TypeParam;
  const auto ordered = [](T x, T y) { return x <= y; };
  const auto complementary = [](T x, T y) { return x == static_cast<T>(~y); };
  for (const auto& [name, image] : hard_images<T>(std::is_same_v<T, int> ? 300 : 40)) {
    const std::size_t size = image.values.size();
    const auto [least, greatest] = std::minmax_element(image.values.begin(), image.values.end());
    auto complement = image;
    for (T& value : complement.values) value = static_cast<T>(~value);
    for (const std::string attribute : {"a", "d", "i", "s"}) {
      std::map<std::string, std::vector<T>> blocks;
      for (const std::string rule : {"min", "max", "direct", "sub"}) {
        SCOPED_TRACE(name + ", " + attribute + ", " + rule);
        const std::vector<T>& block = blocks[rule] = planes(image, attribute, rule);
        const auto plane = [&](std::size_t k) { return std::vector<T>(&block[k * size], &block[k * size] + size); };
        ASSERT_TRUE(plane(0) == std::vector<T>(size, *greatest));
        ASSERT_TRUE(plane(2) == column_major(image));
        ASSERT_TRUE(plane(4) == std::vector<T>(size, *least));
        if (attribute == "i" || attribute == "s") continue;  // their sums are rounded in another order
        const auto mirrored = planes(complement, attribute, rule);
        for (std::size_t k = 0; k < 5; ++k)
          ASSERT_TRUE(std::equal(&block[k * size], &block[k * size] + size, &mirrored[(4 - k) * size], complementary));
      }
      // In the max-tree direct keeps all that min keeps, and max all that direct keeps; sub lowers, beside what is
      // removed, what stands on it.
      const auto lowered = [&](const char* rule) { return &blocks[rule][3 * size]; };
      for (const auto& [low, high] : {std::pair("min", "direct"), {"direct", "max"}, {"sub", "direct"}})
        ASSERT_TRUE(std::equal(lowered(low), lowered(low) + size, lowered(high), ordered))
            << name << ", " << attribute << ", " << low << " above " << high;
    }
  }
}

}  // namespace

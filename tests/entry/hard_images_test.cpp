// SPDX-License-Identifier: MIT

// Deep trees, long thin regions and extreme values, by every attribute and rule, with a stack of 512 kB.

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace {

/// Rising values in a row and in a column of `n`^2 pixels or as many as there can be, and pictures of n x n.
template <typename T>
std::map<std::string, support::matrix<T>> hard_images(std::size_t n) {
  support::random_engine engine(7);
  std::map<std::string, support::matrix<T>> images = {{"row", {1, std::min<std::size_t>(n * n, 32765), {}}}};
  for (std::size_t i = 0; i < images["row"].cols; ++i) images["row"].values.push_back(static_cast<T>(i));
  images["column"] = transposed(images["row"]);
  images["checkerboard"] = support::random_image<T>(n, n, support::flavour::checkerboard, engine);
  images["constant"] = support::random_image<T>(n, n, support::flavour::constant, engine);
  images["distinct values"] = support::random_image<T>(n, n, support::flavour::all_distinct, engine);
  for (const char* const name : {"spiral", "serpentine", "rising serpentine", "comb", "extremes"})
    images[name] = {n, n, std::vector<T>(n * n)};
  for (std::size_t i = 0; i < n * n; ++i) {
    const std::size_t r = i / n;
    const std::size_t c = i % n;
    // Rings, each cut and joined to the next but one.
    images["spiral"].values[i] = (std::min({r, c, n - 1 - r, n - 1 - c}) % 2 == 0) != (r == c + 1 && 2 * r < n);
    const bool path = r % 2 == 0 || c == (r % 4 == 1 ? n - 1 : 0);
    images["serpentine"].values[i] = path;
    images["rising serpentine"].values[i] = static_cast<T>(path ? r * n + (r % 4 == 2 ? n - c : c) : 0);
    images["comb"].values[i] = static_cast<T>(c % 2 == 0 ? c + 2 : r == n - 1);
    using limits = std::numeric_limits<T>;
    images["extremes"].values[i] = support::below(2, engine) == 0 ? limits::min() : limits::max();
  }
  return images;
}

template <typename T>
struct hard_image : ::testing::Test {};
TYPED_TEST_SUITE(hard_image, support::value_types, support::value_type_names);

TYPED_TEST(hard_image, is_filtered_until_nothing_is_left_and_mirrored_by_its_complement) {
  for (const auto& [name, image] : hard_images<TypeParam>(std::is_same_v<TypeParam, int> ? 300 : 60)) {
    const auto input = column_major(image);
    const std::size_t size = input.size();
    const auto [least, greatest] = std::minmax_element(input.begin(), input.end());
    auto complement = image;
    for (TypeParam& value : complement.values) value = static_cast<TypeParam>(~value);
    for (const std::string attribute : {"a", "d", "i", "s"})
      for (const char* const rule : {"min", "max", "direct", "sub"}) {
        // Nothing reaches the second threshold.
        const test_host::request r{attribute, {60, attribute == "s" ? 1e30 : 4e9}, 4, rule};
        const auto found = planes(image, r);
        auto expected = found;
        if (attribute == "a" || attribute == "d") {  // the others round sums in another order
          const auto mirrored = planes(complement, r);
          for (std::size_t i = 0; i < found.size(); ++i)
            expected[i] = static_cast<TypeParam>(~mirrored[(4 - i / size) * size + i % size]);
        }
        for (std::size_t i = 0; i < size; ++i) {
          expected[i] = *greatest;
          expected[2 * size + i] = input[i];
          expected[4 * size + i] = *least;
        }
        ASSERT_TRUE(found == expected) << name << ", " << r;
      }
  }
}

}  // namespace

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
  using support::flavour;
  support::random_engine engine(7);
  std::map<std::string, support::matrix<T>> images = {{"row", {1, std::min<std::size_t>(n * n, 32765), {}}}};
  for (std::size_t i = 0; i < images["row"].cols; ++i) images["row"].values.push_back(static_cast<T>(i));
  images["column"] = transposed(images["row"]);
  images["checkerboard"] = support::random_image<T>(n, n, flavour::checkerboard, engine);
  images["constant"] = support::random_image<T>(n, n, flavour::constant, engine);
  images["distinct values"] = support::random_image<T>(n, n, flavour::all_distinct, engine);
  for (const char* const name : {"spiral", "serpentine", "rising serpentine", "comb", "extremes"})
    images[name] = {n, n, std::vector<T>(n * n)};
  for (std::size_t i = 0; i < n * n; ++i) {
    const std::size_t r = i / n;
    const std::size_t c = i % n;
    // Rings of which each is cut and joined to the next but one.
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
  using pixels = std::vector<TypeParam>;
  for (const auto& [name, image] : hard_images<TypeParam>(std::is_same_v<TypeParam, int> ? 300 : 60))
    for (const std::string attribute : {"a", "d", "i", "s"})
      for (const char* const rule : {"min", "max", "direct", "sub"}) {
        SCOPED_TRACE(name + ", " + attribute + ", " + rule);
        const auto planes = [&, &image = image](const pixels& values) {
          test_host::reset();
          const auto block = test_host::values<TypeParam>(
              test_host::call({test_host::matrix(image.rows, image.cols, values), test_host::text(attribute),
                               test_host::matrix<double>(1, 2, {60, attribute == "s" ? 1e30 : 4e9}),
                               test_host::matrix<double>(1, 1, {4}), test_host::text(rule)}));
          std::vector<pixels> result;
          for (auto p = block.begin(); p != block.end(); p += static_cast<std::ptrdiff_t>(values.size()))
            result.emplace_back(p, p + static_cast<std::ptrdiff_t>(values.size()));
          return result;
        };
        const auto complement = [](pixels values) {
          for (TypeParam& value : values) value = static_cast<TypeParam>(~value);
          return values;
        };
        const pixels input = column_major(image);
        const auto found = planes(input);
        const auto [least, greatest] = std::minmax_element(input.begin(), input.end());
        ASSERT_TRUE(found[0] == pixels(input.size(), *greatest) && found[4] == pixels(input.size(), *least));
        ASSERT_TRUE(found[2] == input);
        if (attribute == "i" || attribute == "s") continue;  // sums that are rounded in another order
        const auto mirrored = planes(complement(input));
        for (std::size_t k = 0; k < 5; ++k) ASSERT_TRUE(found[k] == complement(mirrored[4 - k])) << "plane " << k;
      }
}

}  // namespace

// SPDX-License-Identifier: MIT

// The whole function, called as a host calls it, against a slow profile by definition on small images, and against laws
// on images too large for it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/slow_profile.hpp"
#include "tests/support/value_types.hpp"

namespace {

using support::flavour;
using support::matrix;
using support::random_engine;
using test_host::planes;
using test_host::request;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

const std::vector<std::pair<std::string, std::string>> attributes = {
    {"a", "area"}, {"d", "diagonal"}, {"i", "inertia"}, {"s", "std"}};
const std::vector<std::string> rules = {"min", "max", "direct", "sub"};

/// Plane `p` of what `planes` returned for `image`.
template <typename T>
matrix<T> plane(const std::vector<T>& all, const matrix<T>& image, std::size_t p) {
  return support::from_column_major(image.rows, image.cols, all, p * image.rows * image.cols);
}

/// The order of the values of T reversed, without loss.
template <typename T>
matrix<T> complement(matrix<T> m) {
  for (T& v : m.values) v = static_cast<T>(~v);
  return m;
}

// ---- The real function against the oracle

/// `n` thresholds, many of them on or right beside the attribute of some node.
std::vector<double> random_thresholds(std::size_t n, const std::vector<double>& attribute_values,
                                      random_engine& engine) {
  static const std::vector<double> special = {
      0,    0.9,   -0.5,   -1,  4294967295.0, 4294967296.0, 0x1.fffffffffffffp62, 0x1p63, -0x1p63,
      1e39, 1e-50, -1e300, nan, inf,          -inf};
  std::vector<double> result;
  while (result.size() < n) {
    const double v = attribute_values[support::below(attribute_values.size(), engine)];
    const std::vector<double> choice = {v,
                                        v,
                                        v + 0.5,
                                        v + 0x1p32,
                                        v - 0x1p32,
                                        std::nextafter(v, inf),
                                        static_cast<double>(std::nextafter(static_cast<float>(v), HUGE_VALF)),
                                        result.empty() ? v : result.back(),
                                        special[support::below(special.size(), engine)]};
    result.push_back(choice[support::below(choice.size(), engine)]);
  }
  return result;
}

/// Compares the profiles of one image by every attribute and rule under both connectivities, with up to
/// `most_thresholds` thresholds each.
template <typename T>
void expect_oracle_planes(const matrix<T>& image, std::size_t most_thresholds, std::uint64_t seed,
                          random_engine& engine) {
  for (const int connectivity : {4, 8}) {
    const oracle::slow_profile<T> slow(image, connectivity);
    for (const auto& [short_name, long_name] : attributes)
      for (std::size_t k = 0; k <= rules.size(); ++k) {
        const std::string rule = k < rules.size() ? rules[k] : "";
        const std::string attribute = support::below(2, engine) == 0 ? short_name : long_name;
        const double given = connectivity == 4 && support::below(3, engine) == 0 ? 0 : connectivity;
        const std::size_t n = 1 + support::below(most_thresholds, engine);
        const request r{attribute, random_thresholds(n, slow.attribute_values(attribute), engine), given, rule};
        ASSERT_EQ(planes(image, r), slow.planes(r.attribute, r.thresholds, r.rule))
            << "seed " << seed << ", image " << image << ", " << r;
      }
  }
}

// A tree of 16-bit values has a queue for each of 65536 values: ten times the time of another on a small image. An
// emulated processor is as slow. Neither gets every seed; a step of 5 still comes to every kind of image and shape.
template <typename T>
constexpr std::uint64_t every_16_bit = sizeof(T) == 2 ? 5 : 1;
#if defined(FEWER_CASES)
constexpr std::uint64_t every = 5;
#else
constexpr std::uint64_t every = 1;
#endif
template <typename T>
constexpr std::uint64_t step = every* every_16_bit<T>;

template <typename T>
class profile_oracle : public ::testing::Test {};
TYPED_TEST_SUITE(profile_oracle, support::value_types, support::value_type_names);

TYPED_TEST(profile_oracle, small_images_agree_in_every_plane) {
  for (std::uint64_t seed = 1; seed <= 120 && !this->HasFatalFailure(); seed += step<TypeParam>) {
    random_engine engine(seed);
    std::size_t rows = seed == 1 ? 1 : 1 + support::below(9, engine);
    std::size_t cols = seed == 1 ? 1 : 1 + support::below(9, engine);
    if (seed % 8 == 0) std::tie(rows, cols) = std::make_pair(1, 2 * cols);
    if (seed % 8 == 4) std::tie(rows, cols) = std::make_pair(2 * rows, 1);
    const flavour kind = support::flavours[seed % support::flavours.size()];
    expect_oracle_planes(support::random_image<TypeParam>(rows, cols, kind, engine), 6, seed, engine);
  }
}

// Large enough for the sums of squared coordinates, and of squared 8-bit values, to leave the 24 bits of a `float`:
// then the order of the sums shows. The greatest coordinates belong to high values, then to low ones, so that they
// weigh in the components of either tree.
TYPED_TEST(profile_oracle, larger_images_whose_sums_round_agree_in_every_plane) {
  const std::vector<std::pair<std::size_t, std::size_t>> shapes = {{1, 500}, {500, 1}, {2, 300}, {24, 28}};
  for (std::uint64_t seed = 1000; seed < 1008 && !this->HasFatalFailure(); seed += every) {
    random_engine engine(seed);
    const auto [rows, cols] = shapes[seed / 2 % shapes.size()];
    const auto rising = support::random_image<TypeParam>(rows, cols, flavour::ramp, engine);
    expect_oracle_planes(seed % 2 == 0 ? rising : complement(rising), 40, seed, engine);
  }
}

// The square of 65 * 65, the area, has more bits than a `float`.
TEST(profile_oracle, the_inertia_of_a_large_region_is_exact) {
  matrix<short> image{67, 67, {}};
  for (std::size_t row = 0; row < 67; ++row)
    for (std::size_t col = 0; col < 67; ++col)
      image.values.push_back(std::min(row, col) > 0 && std::max(row, col) < 66);
  const oracle::slow_profile<short> slow(image, 4);
  request r{"i", slow.attribute_values("i"), 4, "direct"};
  for (std::size_t k = r.thresholds.size(); k > 0; --k)
    r.thresholds.push_back(std::nextafter(static_cast<float>(r.thresholds[k - 1]), HUGE_VALF));
  EXPECT_TRUE(planes(image, r) == slow.planes(r.attribute, r.thresholds, r.rule)) << r;
}

// ---- Laws

template <typename T>
class profile_laws : public ::testing::Test {};
TYPED_TEST_SUITE(profile_laws, support::value_types, support::value_type_names);

// Area and diagonal never shrink from a node to its parent, so a failing node has failing descendants only: planes fall
// with growing thresholds, and the rules agree. No order of sums shows in them, so the image may be transposed.
TYPED_TEST(profile_laws, hold_for_area_and_diagonal_of_larger_images) {
  for (const flavour kind : {flavour::few_levels, flavour::full_range, flavour::ramp, flavour::checkerboard})
    for (const request& given : {request{"area", {2, 7, 30, 40}, 4}, request{"diagonal", {2, 3.5, 6, 12}, 8}}) {
      const auto seed = 2001 + static_cast<std::uint64_t>(kind);
      SCOPED_TRACE(::testing::Message() << "64 x 80 random_image of seed " << seed << ", " << given);
      random_engine engine(seed);
      const auto image = support::random_image<TypeParam>(64, 80, kind, engine);
      const auto all = planes(image, given);
      const auto turned = planes(transposed(image), given);
      for (std::size_t i = 0; i + 5120 < all.size(); ++i) ASSERT_GE(all[i], all[i + 5120]) << "element " << i;
      for (std::size_t p = 0; p < 9; ++p) {
        const auto filtered = plane(all, image, p);
        ASSERT_TRUE(plane(turned, transposed(image), p) == transposed(filtered)) << "plane " << p << " transposed";
        ASSERT_TRUE(plane(planes(filtered, given), image, p) == filtered) << "plane " << p << " filtered again";
      }
      EXPECT_TRUE(plane(all, image, 4) == image);
      for (const std::string& rule : rules)
        ASSERT_TRUE(planes(image, {given.attribute, given.thresholds, given.connectivity, rule}) == all) << rule;
    }
}

}  // namespace

// SPDX-License-Identifier: MIT

// The whole function, called as a host calls it, against a slow profile by definition on small images, and
// against laws of the profile on images that are too large for it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iomanip>
#include <limits>
#include <ostream>
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

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

const std::vector<std::pair<std::string, std::string>> attributes = {
    {"a", "area"}, {"d", "diagonal"}, {"i", "inertia"}, {"s", "std"}};
const std::vector<std::string> rules = {"min", "max", "direct", "sub"};

/// What a call asks for besides the image. Connectivity 0 and an empty rule mean: not given.
struct request {
  std::string attribute;
  std::vector<double> thresholds;
  double connectivity;
  std::string rule;
};

std::ostream& operator<<(std::ostream& out, const request& r) {
  out << "attribute '" << r.attribute << "', rule '" << r.rule << "', connectivity " << r.connectivity
      << ", thresholds [";
  for (const double t : r.thresholds) out << std::setprecision(17) << " " << t;
  return out << " ]";
}

/// The planes that the real function returns, one after the other.
template <typename T>
std::vector<T> planes(const matrix<T>& image, const request& r) {
  test_host::reset();
  std::vector<const mxArray*> args = {test_host::matrix<T>(image.rows, image.cols, column_major(image)),
                                      test_host::text(r.attribute),
                                      test_host::matrix<double>(1, r.thresholds.size(), r.thresholds)};
  if (r.connectivity != 0)
    args.push_back(test_host::matrix<double>(1, 1, {r.connectivity}));
  else if (!r.rule.empty())
    args.push_back(test_host::matrix<double>(0, 0, {}));
  if (!r.rule.empty()) args.push_back(test_host::text(r.rule));
  const mxArray* result = test_host::call(args);
  const std::vector<std::size_t> dimensions = {image.rows, image.cols, 2 * r.thresholds.size() + 1};
  EXPECT_EQ(test_host::dimensions(result), dimensions);
  EXPECT_EQ(test_host::class_of(result), test_host::class_of(args[0]));
  return test_host::values<T>(result);
}

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

// ---- The oracle itself

TEST(slow_profile, attribute_values_worked_out_by_hand) {
  const auto of_one_node = [](const auto& image, const std::string& attribute) {
    return oracle::slow_profile(image, 4).attribute_values(attribute)[0];
  };
  EXPECT_EQ(of_one_node(matrix<int>{1, 1, {-7}}, "d"), 1.4142135623730951);
  EXPECT_EQ(of_one_node(matrix<int>{1, 5, {3, 3, 3, 3, 3}}, "d"), std::sqrt(26.0));
  EXPECT_EQ(of_one_node(matrix<int>{1, 2, {3, 3}}, "i"), 0.125);
  EXPECT_EQ(of_one_node(matrix<int>{3, 1, {3, 3, 3}}, "i"), static_cast<double>(2.0F / 9.0F));
  EXPECT_EQ(of_one_node(matrix<unsigned short>{1, 2, {46340, 46340}}, "s"), 0);
  // The square of 46341 is negative in 32 bits, and the variance with it.
  EXPECT_TRUE(std::isnan(of_one_node(matrix<unsigned short>{1, 2, {46341, 46341}}, "s")));
}

// ---- The real function against the oracle

/// `n` thresholds, many of them on or right beside the attribute of some node.
std::vector<double> random_thresholds(std::size_t n, const std::vector<double>& attribute_values,
                                      random_engine& engine) {
  static const std::vector<double> special = {0,       0.9,  -0.5,  -1,     4294967295.0, 4294967296.0, 0x1p63,
                                              -0x1p63, 1e39, 1e-50, -1e300, nan,          inf,          -inf};
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

// An emulated processor takes ten times as long and gets every third seed.
#if defined(FEWER_CASES)
constexpr std::uint64_t step = 3;
#else
constexpr std::uint64_t step = 1;
#endif

template <typename T>
class profile_oracle : public ::testing::Test {};
TYPED_TEST_SUITE(profile_oracle, support::value_types, support::value_type_names);

TYPED_TEST(profile_oracle, small_images_agree_in_every_plane) {
  for (std::uint64_t seed = 1; seed <= 120 && !this->HasFatalFailure(); seed += step) {
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
// from there on the order of the sums shows. The greatest coordinates belong to high values, then to low ones, so that
// they weigh in the components of either tree.
TYPED_TEST(profile_oracle, larger_images_whose_sums_round_agree_in_every_plane) {
  const std::vector<std::pair<std::size_t, std::size_t>> shapes = {{1, 500}, {500, 1}, {2, 300}, {24, 28}};
  for (std::uint64_t seed = 1000; seed < 1008 && !this->HasFatalFailure(); seed += step) {
    random_engine engine(seed);
    const auto [rows, cols] = shapes[seed / 2 % shapes.size()];
    const auto rising = support::random_image<TypeParam>(rows, cols, flavour::ramp, engine);
    expect_oracle_planes(seed % 2 == 0 ? rising : complement(rising), 40, seed, engine);
  }
}

// ---- Laws

/// Calls `law(image)` for a larger image of each kind that has many nodes.
template <typename T>
void for_larger_images(const std::function<void(const matrix<T>&)>& law) {
  for (const flavour kind : {flavour::few_levels, flavour::full_range, flavour::ramp, flavour::checkerboard}) {
    const auto seed = 2001 + static_cast<std::uint64_t>(kind);
    SCOPED_TRACE("64 x 80 random_image of seed " + std::to_string(seed));
    random_engine engine(seed);
    law(support::random_image<T>(64, 80, kind, engine));
  }
}

template <typename T>
class profile_laws : public ::testing::Test {};
TYPED_TEST_SUITE(profile_laws, support::value_types, support::value_type_names);

/// The attributes whose values depend on no order of sums.
const std::vector<request> exact_requests = {{"a", {30, 7, 2}, 4, ""}, {"d", {3.5, 12, 2}, 8, ""}};

// The trees of the complement have changed places.
TYPED_TEST(profile_laws, complement_mirrors_the_planes) {
  for_larger_images<TypeParam>([](const matrix<TypeParam>& image) {
    for (request r : exact_requests)
      for (const std::string& rule : rules) {
        r.rule = rule;
        const auto direct = planes(image, r);
        const auto mirrored = planes(complement(image), r);
        for (std::size_t p = 0; p < 7; ++p)
          ASSERT_TRUE(plane(direct, image, p) == complement(plane(mirrored, image, 6 - p)))
              << "plane " << p << ", " << r;
      }
  });
}

TYPED_TEST(profile_laws, transposing_the_image_transposes_the_planes) {
  for_larger_images<TypeParam>([](const matrix<TypeParam>& image) {
    const auto turned = transposed(image);
    for (request r : exact_requests)
      for (const std::string& rule : rules) {
        r.rule = rule;
        const auto expected = planes(image, r);
        const auto found = planes(turned, r);
        for (std::size_t p = 0; p < 7; ++p)
          ASSERT_TRUE(plane(found, turned, p) == transposed(plane(expected, image, p))) << "plane " << p << ", " << r;
      }
  });
}

TYPED_TEST(profile_laws, the_input_stands_in_the_middle_below_the_min_tree_and_above_the_max_tree) {
  for_larger_images<TypeParam>([](const matrix<TypeParam>& image) {
    const auto input = column_major(image);
    for (const request& r : {request{"a", {9, 2}, 8, ""}, request{"d", {4, 9}, 4, ""}, request{"i", {0.2, 0.5}, 4, ""},
                             request{"s", {20, 1}, 8, ""}})
      for (const std::string& rule : rules) {
        request with_rule = r;
        with_rule.rule = rule;
        const auto all = planes(image, with_rule);
        for (std::size_t i = 0; i < all.size(); ++i) {
          const TypeParam v = input[i % input.size()];
          const std::size_t p = i / input.size();
          ASSERT_TRUE(p < 2    ? all[i] >= v
                      : p == 2 ? all[i] == v
                               : all[i] <= v)
              << "plane " << p << ", element " << i % input.size() << ", " << with_rule;
        }
      }
  });
}

TYPED_TEST(profile_laws, planes_fall_with_growing_area_thresholds) {
  for_larger_images<TypeParam>([](const matrix<TypeParam>& image) {
    const auto all = planes(image, {"area", {2, 5, 40, 5121}, 4, ""});
    const std::size_t size = image.values.size();
    for (std::size_t i = 0; i + size < all.size(); ++i) ASSERT_GE(all[i], all[i + size]) << "element " << i;
    // No component has more sites than the image.
    const auto [least, greatest] = std::minmax_element(image.values.begin(), image.values.end());
    EXPECT_EQ(std::vector<TypeParam>(all.begin(), all.begin() + 5120), std::vector<TypeParam>(5120, *greatest));
    EXPECT_EQ(std::vector<TypeParam>(all.end() - 5120, all.end()), std::vector<TypeParam>(5120, *least));
  });
}

TYPED_TEST(profile_laws, filtering_a_filtered_plane_again_changes_nothing) {
  for_larger_images<TypeParam>([](const matrix<TypeParam>& image) {
    for (const request& r : {request{"area", {12}, 4, ""}, request{"diagonal", {5.5}, 8, ""}}) {
      const auto once = planes(image, r);
      for (const std::size_t p : {std::size_t{0}, std::size_t{2}}) {
        const auto filtered = plane(once, image, p);
        ASSERT_TRUE(plane(planes(filtered, r), image, p) == filtered) << "plane " << p << ", " << r;
      }
    }
  });
}

// Area and diagonal never shrink from a node to its parent, so a failing node has failing descendants only.
TYPED_TEST(profile_laws, rules_agree_for_area_and_diagonal) {
  for_larger_images<TypeParam>([](const matrix<TypeParam>& image) {
    for (request r : exact_requests) {
      const auto by_default = planes(image, r);
      for (const std::string& rule : rules) {
        r.rule = rule;
        ASSERT_TRUE(planes(image, r) == by_default) << r;
      }
    }
  });
}

}  // namespace

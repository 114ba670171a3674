// SPDX-License-Identifier: MIT

#include <qel/data/sort_psites.hpp>

#include <algorithm>
#include <cstdint>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
using qel::data::sort_psites_decreasing;
using qel::data::sort_psites_increasing;

template <typename T>
class sort_psites : public ::testing::Test {};
TYPED_TEST_SUITE(sort_psites, support::value_types, support::value_type_names);

TYPED_TEST(sort_psites, ties_of_a_small_image) {
  const auto ima = image<TypeParam>({2, 2, {5, 7, 5, 7}});
  const bool is_low = sizeof(TypeParam) == 1;
  EXPECT_EQ(sort_psites_increasing(ima).vect_, (sites{{0, 0}, {1, 0}, {0, 1}, {1, 1}}));
  EXPECT_EQ(sort_psites_decreasing(ima).vect_,
            is_low ? (sites{{0, 1}, {1, 1}, {0, 0}, {1, 0}}) : (sites{{1, 1}, {0, 1}, {1, 0}, {0, 0}}));
}

// 8 bits keep raster order both ways; the falling order of a wider type mirrors the rising one.
TYPED_TEST(sort_psites, equals_a_stable_sort_of_the_raster_order) {
  for_random_images<TypeParam>([](const image2d<TypeParam>& ima, auto&) {
    using I = image2d<TypeParam>;
    sites rising = walk(box2d::fwd_piter(ima.domain()));
    sites falling = rising;
    std::stable_sort(rising.begin(), rising.end(), [&](auto& p, auto& q) { return ima(p) < ima(q); });
    std::stable_sort(falling.begin(), falling.end(), [&](auto& p, auto& q) { return ima(p) > ima(q); });
    EXPECT_EQ(sort_psites_increasing(ima).vect_, rising);
    if (sizeof(TypeParam) > 1) {
      std::sort(falling.begin(), falling.end(), qel::data::impl::value_psite_greater_<I>(ima));
      EXPECT_EQ(falling, sites(rising.rbegin(), rising.rend()));
    }
    EXPECT_EQ(sort_psites_decreasing(ima).vect_, falling);
    std::sort(falling.begin(), falling.end(), qel::data::impl::value_psite_less_<I>(ima));
    EXPECT_EQ(falling, rising);
  });
}

TEST(sort_psites, honours_the_sign_of_64_bit_values) {
  const std::uint64_t high = std::uint64_t{1} << 63;
  const auto as_unsigned = image<std::uint64_t>({1, 2, {high, 1}});
  const auto as_signed = image<std::int64_t>({1, 2, {static_cast<std::int64_t>(high), 1}});
  EXPECT_EQ(sort_psites_increasing(as_unsigned).vect_, (sites{{0, 1}, {0, 0}}));
  EXPECT_EQ(sort_psites_increasing(as_signed).vect_, (sites{{0, 0}, {0, 1}}));
}

// The digits between the lowest and the highest bits are the same in all values.
TEST(sort_psites, passes_over_constant_digits) {
  const std::int64_t high = std::int64_t{1} << 62;
  const auto ima = image<std::int64_t>({1, 4, {high + 3, 5, high, 3}});
  EXPECT_EQ(sort_psites_increasing(ima).vect_, (sites{{0, 3}, {0, 1}, {0, 2}, {0, 0}}));
}

TEST(sort_psites, compares_values_that_are_no_integers) {
  image2d<float> reals(box2d({0, 0}, {0, 2}));
  reals({0, 0}) = reals({0, 1}) = 0.5f;
  reals({0, 2}) = -1.5f;
  EXPECT_EQ(sort_psites_increasing(reals).vect_, (sites{{0, 2}, {0, 0}, {0, 1}}));
  EXPECT_EQ(sort_psites_decreasing(reals).vect_, (sites{{0, 1}, {0, 0}, {0, 2}}));
  image2d<bool> truths(box2d({0, 0}, {0, 1}));
  truths({0, 0}) = true;
  truths({0, 1}) = false;
  EXPECT_EQ(sort_psites_increasing(truths).vect_, (sites{{0, 1}, {0, 0}}));
}

}  // namespace

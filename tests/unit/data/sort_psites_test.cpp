// SPDX-License-Identifier: MIT

#include <qel/data/sort_psites.hpp>

#include <algorithm>
#include <limits>
#include <type_traits>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;

template <typename T>
class sort_psites : public ::testing::Test {};
TYPED_TEST_SUITE(sort_psites, tree_types, support::value_type_names);

/// 8-bit integers keep raster order both ways; the falling order of any other type mirrors the rising one.
template <typename T>
void expect_sorted(const image2d<T>& ima) {
  sites rising = walk(box2d::fwd_piter(ima.domain()));
  sites falling = rising;
  std::stable_sort(rising.begin(), rising.end(), [&](auto& p, auto& q) { return ima(p) < ima(q); });
  std::stable_sort(falling.begin(), falling.end(), [&](auto& p, auto& q) { return ima(p) > ima(q); });
  if (sizeof(T) > 1 || std::is_same_v<T, bool>) falling = sites(rising.rbegin(), rising.rend());
  EXPECT_EQ(qel::data::sort_psites_increasing(ima).vect_, rising);
  EXPECT_EQ(qel::data::sort_psites_decreasing(ima).vect_, falling);
}

TYPED_TEST(sort_psites, equals_a_stable_sort_of_the_raster_order) {
  for_random_images<TypeParam>([](const image2d<TypeParam>& ima, auto&) { expect_sorted(ima); });
  support::random_engine engine(seed);  // large enough for wide digits
  expect_sorted(image(support::random_image<TypeParam>(256, 256, support::flavour::full_range, engine)));
}

// The values differ by one, in the highest bit alone or in all below it: a sort that skips a digit fails.
TYPED_TEST(sort_psites, looks_at_every_bit) {
  using T = TypeParam;
  for (int bit = 0; bit < std::numeric_limits<T>::digits; ++bit) {
    const auto power = static_cast<T>(1ull << bit);
    SCOPED_TRACE(::testing::Message() << "2^" << bit);
    expect_sorted(image<T>({1, 4, {power, T(0), static_cast<T>(power - T(1)), power}}));
  }
}

}  // namespace

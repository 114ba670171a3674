// SPDX-License-Identifier: MIT

// The general accumulators and the attributes that stand on them.

#include <qel/accu/shape/bbox.hpp>
#include <qel/accu/shape/inertia2d.hpp>
#include <qel/accu/stat/variance.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>

#include <cmath>
#include <type_traits>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
using I = image2d<unsigned short>;
using area = qel::morpho::attribute::card<I>;
using diagonal = qel::morpho::attribute::diagonal<I>;
using inertia = qel::morpho::attribute::inertia<I>;
using deviation = qel::morpho::attribute::deviation<I, float, float>;
using bbox = qel::accu::shape::bbox<point2d>;
using inertia2d = qel::accu::shape::inertia2d<point2d>;
using variance = qel::accu::stat::variance<unsigned short, float, float>;

template <typename A>
using elements = std::vector<typename A::argument>;

/// The result of an accumulator that has taken `some`.
template <typename A>
typename A::result result_of(const elements<A>& some) {
  A a;
  for (const auto& t : some) a.take(t);
  return a.to_result();
}

// Small random elements: all float sums are exact, so the order of merging does not show.
void set_random(point2d& p, support::random_engine& engine) {
  p = point2d(0, 0) + dpoint2d(support::below(40, engine), -static_cast<int>(support::below(40, engine)));
}
void set_random(unsigned short& v, support::random_engine& engine) {
  v = static_cast<unsigned short>(support::below(40, engine));
}

template <typename A>
class accumulator : public ::testing::Test {};
using accumulators = ::testing::Types<area, diagonal, inertia, deviation, bbox, inertia2d, variance>;
TYPED_TEST_SUITE(accumulator, accumulators, );

TYPED_TEST(accumulator, merges_restarts_and_converts) {
  using A = TypeParam;
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  support::random_engine engine(seed);
  for (int i = 0; i < 50; ++i) {
    elements<A> all(2 + support::below(9, engine));
    for (auto& t : all) set_random(t, engine);
    A a, b;
    for (std::size_t k = 0; k < all.size(); ++k) (k < all.size() / 2 ? a : b).take(all[k]);
    const A before = a;
    A emptied = b;
    emptied.init();
    a.take(emptied);
    EXPECT_EQ(a.to_result(), before.to_result());
    emptied.take(a);
    EXPECT_EQ(emptied.to_result(), before.to_result());
    a.take(b);
    EXPECT_EQ(a.to_result(), result_of<A>(all));
    const typename A::result& converted = a;
    EXPECT_EQ(converted, a.to_result());
    a.take_as_init(all[0]);
    EXPECT_EQ(a.to_result(), result_of<A>({all[0]}));
    EXPECT_TRUE(a.is_valid());
  }
}

TEST(accumulator, without_elements) {
  EXPECT_EQ(area().to_result(), 0u);
  EXPECT_TRUE(std::isnan(inertia().to_result()));
  EXPECT_TRUE(area().is_valid() && inertia().is_valid());
  EXPECT_FALSE(bbox().is_valid() || diagonal().is_valid() || variance().is_valid() || deviation().is_valid());
}

TEST(diagonal, is_measured_in_sites_between_the_ends_of_the_box) {
  EXPECT_EQ(result_of<diagonal>({{7, -7}}), 1.4142135623730951);
  EXPECT_EQ(result_of<diagonal>({{-3, 2}, {-3, 4}, {-3, 0}}), std::sqrt(26.0));
  EXPECT_EQ(result_of<diagonal>({{-32768, 0}, {32767, 0}}), std::sqrt(65536.0 * 65536.0 + 1));
}

TEST(inertia, is_the_sum_of_the_central_moments_over_the_squared_area) {
  for (const point2d& p : {point2d(0, 0), {12345, -321}, {32764, 32764}}) EXPECT_EQ(result_of<inertia>({p}), 0.0f);
  EXPECT_EQ(result_of<inertia>({{0, 0}, {0, 1}}), 0.125f);
  EXPECT_EQ(result_of<inertia>({{5, 3}, {6, 3}, {7, 3}}), static_cast<float>(2.0 / 9.0));
}

TEST(deviation, is_the_root_of_the_population_variance_of_squares_in_the_promoted_type) {
  EXPECT_EQ(result_of<deviation>({0, 2}), 1.0f);
  EXPECT_EQ(result_of<variance>({0, 0, 6}), 8.0f);
  EXPECT_EQ(result_of<deviation>({46340}), 0.0f);
  EXPECT_TRUE(std::isnan(result_of<deviation>({46341})));
}

}  // namespace

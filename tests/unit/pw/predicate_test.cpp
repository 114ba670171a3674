// SPDX-License-Identifier: MIT

// Predicates made of an image and a constant.

#include <qel/fun/geq.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <limits>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace pw = qel::pw;

/// Whether a value reaches a threshold.
template <typename A>
bool reaches(A value, A threshold) {
  const auto ima = image<A>({1, 1, {value}});
  const qel::fun::geq_v2b_expr_<pw::value_<image2d<A>>, pw::cst_<A>> pred = pw::value_(ima) >= pw::cst_(threshold);
  return pred(point2d(0, 0));
}

TEST(predicate, passes_at_equality_and_fails_on_a_nan) {
  EXPECT_TRUE(reaches(5u, 5u));
  EXPECT_FALSE(reaches(5u, 6u));
  EXPECT_TRUE(reaches(4294967295u, 1u));
  EXPECT_TRUE(reaches(0u, 0u));
  EXPECT_FALSE(reaches(0.1, 0.10000000000000002));
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FALSE(reaches(nan, 0.0f) || reaches(0.0f, nan) || reaches(nan, nan));
}

TEST(predicate, reads_through_the_handle_of_the_caller) {
  auto ima = image<unsigned>({1, 1, {1}});
  const auto pred = pw::value_(ima) >= pw::cst_(2u);
  EXPECT_FALSE(pred(point2d(0, 0)));
  ima = image<unsigned>({1, 1, {2}});
  EXPECT_TRUE(pred(point2d(0, 0)));
}

}  // namespace

// SPDX-License-Identifier: MIT

// Sites and boxes at the ends of the range. fuzz/containers.cpp walks over any of them.

#include <qel/core/site_set/box_piter.hpp>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;

TEST(point2d, sums_and_differences_wrap_modulo_65536) {
  EXPECT_EQ(point2d(-32768, 32767) + dpoint2d(-32768, 32767), point2d(0, -2));
  EXPECT_EQ(point2d(0, 0) - dpoint2d(-32768, 32767), point2d(-32768, -32767));
  EXPECT_EQ(dpoint2d(65535u, 65539), dpoint2d(-1, 3));
}

TEST(box2d, validity_and_lengths) {
  struct {
    box2d b;
    bool is_valid;
    unsigned rows, cols, nsites;
  } const cases[] = {{box2d(), false, 0, 0, 0},
                     {box2d({-3, -4}, {2, 5}), true, 6, 10, 60},
                     {box2d({0, 5}, {3, 2}), true, 4, 4294967294u, 4294967288u},
                     {box2d({0, 1}, {0, 0}), false, 0, 0, 0},
                     {box2d({-32768, -32768}, {32767, 32767}), true, 65536, 65536, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.b.pmin()) + " to " + ::testing::PrintToString(c.b.pmax()));
    EXPECT_EQ(c.b.is_valid(), c.is_valid);
    EXPECT_EQ(c.b.len(0), c.rows);
    EXPECT_EQ(c.b.len(1), c.cols);
    EXPECT_EQ(c.b.nsites(), c.nsites);
  }
}

TEST(box_piter, takes_no_notice_of_the_validity_of_the_box) {
  const box2d none;
  EXPECT_EQ(walk(box2d::fwd_piter(none)), (sites{{32767, 32767}, {32767, -32768}, {-32768, 32767}, {-32768, -32768}}));
}

}  // namespace

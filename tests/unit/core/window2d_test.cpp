// SPDX-License-Identifier: MIT

// Neighbourhoods and their walks. fuzz/containers.cpp compares any windows with a model.

#include <qel/core/neighb2d.hpp>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;

sites neighbours(const neighb2d& nbh, const point2d& p) { return walk(neighb2d::niter(nbh, p)); }

TEST(neighb2d, neighbours_come_in_row_major_order_wherever_they_lie) {
  EXPECT_EQ(neighbours(c4(), {-32768, 32767}),
            (sites{{32767, 32767}, {-32768, 32766}, {-32768, -32768}, {-32767, 32767}}));
  EXPECT_EQ(neighbours(c8(), {5, 7}), (sites{{4, 6}, {4, 7}, {4, 8}, {5, 6}, {5, 8}, {6, 6}, {6, 7}, {6, 8}}));
  neighb2d nbh;
  EXPECT_EQ(neighbours(nbh, {0, 0}), sites());
  qel::convert::over_load::from_to_<9u>({false, false, true, true, true, false, false, false, false}, nbh);
  EXPECT_EQ(neighbours(nbh, {0, 0}), (sites{{-1, 1}, {0, -1}, {0, 0}}));
}

TEST(neighb_niter, its_centre_is_alive) {
  const p_array2d s(sites{{5, 5}, {5, 6}});
  p_array2d::fwd_piter p(s);
  p.start();
  neighb2d::niter n(c4(), p);
  EXPECT_FALSE(n.is_valid());
  n.start();
  EXPECT_EQ(n.to_site(), point2d(4, 5));
  p.next();
  EXPECT_EQ(n.to_site(), point2d(4, 5));
  n.start();
  EXPECT_EQ(n.to_site(), point2d(4, 6));
  const point2d elsewhere(0, 0);
  n.center_at(elsewhere);
  n.change_target(c8());
  EXPECT_FALSE(n.is_valid());
  EXPECT_EQ(walk(n)[0], point2d(-1, -1));
}

}  // namespace

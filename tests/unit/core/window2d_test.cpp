// SPDX-License-Identifier: MIT

// Windows, neighbourhoods and their walks.

#include <qel/core/neighb2d.hpp>
#include <qel/core/window2d.hpp>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;

TEST(window2d, sorts_drops_duplicates_and_tells_its_shape) {
  qel::window2d win;
  EXPECT_EQ(win.delta(), 0u);
  EXPECT_TRUE(win.is_symmetric());
  EXPECT_FALSE(win.is_centered());
  for (const dpoint2d& dp : {dpoint2d(1, 0), dpoint2d(-1, 0), dpoint2d(1, 0)}) win.insert(dp);
  EXPECT_EQ(win.size(), 2u);
  EXPECT_EQ(win.dp(0), dpoint2d(-1, 0));
  EXPECT_TRUE(win.is_symmetric());
  win.insert({0, 0});
  win.insert({-7, 3});
  EXPECT_EQ(win.dp(2), dpoint2d(0, 0));
  EXPECT_TRUE(win.is_centered());
  EXPECT_EQ(win.delta(), 7u);
  EXPECT_FALSE(win.is_symmetric());
  win.sym();
  EXPECT_FALSE(win.std_set().is_frozen());
  EXPECT_EQ(win.dp(3), dpoint2d(7, -3));
}

sites neighbours(const neighb2d& nbh, const point2d& p) { return walk(neighb2d::niter(nbh, p)); }

TEST(neighb2d, neighbours_come_in_row_major_order_wherever_they_lie) {
  EXPECT_EQ(neighbours(c4(), {0, 0}), (sites{{-1, 0}, {0, -1}, {0, 1}, {1, 0}}));
  EXPECT_EQ(neighbours(c8(), {5, 7}), (sites{{4, 6}, {4, 7}, {4, 8}, {5, 6}, {5, 8}, {6, 6}, {6, 7}, {6, 8}}));
  EXPECT_EQ(neighbours(c4(), {-32768, 32767}),
            (sites{{32767, 32767}, {-32768, 32766}, {-32768, -32768}, {-32767, 32767}}));
  neighb2d nbh;
  EXPECT_EQ(neighbours(nbh, {0, 0}), sites());
  qel::convert::over_load::from_to_<9u>({false, false, true, true, true, false, false, false, false}, nbh);
  EXPECT_EQ(neighbours(nbh, {0, 0}), (sites{{-1, 1}, {0, -1}, {0, 0}}));
}

TEST(neighb2d, c4_and_c8_exist_once_and_stay_filled) {
  for (const auto& [get, size] : {std::pair{&c4, 4u}, {&c8, 8u}}) {
    const neighb2d& nbh = get();
    EXPECT_EQ(&get(), &nbh);
    EXPECT_EQ(nbh.size(), size);
    EXPECT_EQ(nbh.win().delta(), 1u);
    EXPECT_TRUE(nbh.win().is_symmetric() && !nbh.win().is_centered());
  }
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

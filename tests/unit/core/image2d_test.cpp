// SPDX-License-Identifier: MIT

#include <qel/core/image2d.hpp>

#include <qel/core/opt_at.hpp>

#include <cstddef>
#include <new>
#include <tuple>
#include <utility>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;

// A wider border leaves fewer coordinates to the image. Without a border, the end of a walk takes one.
TEST(image2d, the_border_counts_for_the_range_of_coordinates) {
  for (const auto& [border, greatest] : {std::pair{10u, 32758}, {3u, 32765}, {0u, 32767}}) {
    const auto n = static_cast<std::size_t>(greatest);
    EXPECT_EQ(image2d<char>(n, 2, border).domain(), box2d(point2d(0, 0), point2d(0, 0) + dpoint2d(n - 1, 1)));
    EXPECT_THROW(image2d<char>(2, n + 1, border), std::bad_array_new_length);
    EXPECT_THROW(image2d<char>(65537, 2, border), std::bad_array_new_length);
  }
  const image2d<char> beyond(box2d({0, 0}, {32765, 9}));
  EXPECT_EQ(beyond.nelements(), 0u);
  EXPECT_EQ(beyond.domain().nsites(), 327660u);
}

// 4.3 billion bytes, of which a few pages are touched: counts fit into 32 bits, sizes in bytes and places do not.
TEST(image2d, the_largest_image_is_addressed_beyond_32_bits) {
  image2d<int> ima(box2d({0, 0}, {32764, 32764}));
  EXPECT_EQ(ima.domain().nsites(), 1073545225u);
  EXPECT_EQ(ima.nelements(), 32771u * 32771u);
  const point2d last(32764, 32764);
  const unsigned index = 32767u * 32771u + 32767u;
  ima(last) = 7;
  EXPECT_EQ(&ima(last) - ima.buffer(), std::ptrdiff_t{index});
  EXPECT_EQ(ima.element(index), 7);
  EXPECT_EQ(ima.index_of_point(last), index);
  EXPECT_EQ(ima.point_at_index(index), last);
  EXPECT_EQ(ima.delta_index(dpoint2d(32764, 32764)), 32764 * 32771 + 32764);
}

// Row and column of the first site shift the row table: coordinate 0 lies in the padded box, before it or behind it.
// The sanitizers see every access.
TEST(image2d, every_site_of_the_padded_box_is_the_element_of_its_index) {
  for (const point2d& pmin : {point2d(0, 0), {-1, -2}, {4, 90}, {500, -300}, {-500, 300}, {-32765, 32760}})
    for (const auto& [bdr, rows, cols] : {std::tuple{0, 1, 1}, {0, 3, 5}, {3, 1, 1}, {3, 4, 2}}) {
      SCOPED_TRACE(::testing::PrintToString(pmin) + ", border " + std::to_string(bdr));
      image2d<long> ima(box2d(pmin, pmin + dpoint2d(rows - 1, cols - 1)), static_cast<unsigned>(bdr));
      const point2d first = pmin - dpoint2d(bdr, bdr);
      int i = 0;
      for (int row = 0; row < rows + 2 * bdr; ++row)
        for (int col = 0; col < cols + 2 * bdr; ++col, ++i) {
          const point2d p = first + dpoint2d(row, col);
          const auto index = static_cast<unsigned>(i);
          ima(p) = i;
          EXPECT_EQ(ima.element(index), i);
          EXPECT_EQ(&qel::opt::at(ima, p.row(), p.col()), ima.buffer() + i);
          EXPECT_EQ(ima.index_of_point(p), index);
          EXPECT_EQ(ima.point_at_index(index), p);
          EXPECT_EQ(ima.delta_index(dpoint2d(row, col)), i);
          EXPECT_TRUE(ima.has(p));
        }
      EXPECT_EQ(ima.nelements(), static_cast<unsigned>(i));
      EXPECT_FALSE(ima.has(first - dpoint2d(0, 1)) || ima.has(first - dpoint2d(1, 0)));
    }
}

TEST(image2d, a_copy_shares_its_record_until_one_of_them_takes_another) {
  image2d<int> a = image<int>({2, 2, {7, 7, 7, 7}});
  const image2d<int>& same = a;
  a = same;
  const image2d<int> b(a);
  a({1, 1}) = 8;
  EXPECT_EQ(b.record().holders()->size(), 2u);
  a.init_(box2d({0, 0}, {0, 0}), 1);
  EXPECT_EQ(values(b), (std::vector<int>{7, 7, 7, 8}));
  EXPECT_EQ(b.record().holders()->size(), 1u);
  for (int i = 0; i < 2; ++i) {
    a = image2d<int>();
    EXPECT_FALSE(a.is_valid());
  }
}

}  // namespace

// SPDX-License-Identifier: MIT
#ifndef TESTS_UNIT_UNIT_HPP
#define TESTS_UNIT_UNIT_HPP

// What every unit test starts from: GoogleTest, images, walks and trees.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ostream>
#include <utility>
#include <vector>

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/morpho/tree/data.hpp>

#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

namespace qel {

template <typename G, typename C>
void PrintTo(const point<G, C>& p, std::ostream* out) {
  *out << '(' << p.row() << ", " << p.col() << ')';
}

}  // namespace qel

namespace unit {

using qel::box2d;
using qel::c4;
using qel::c8;
using qel::dpoint2d;
using qel::image2d;
using qel::neighb2d;
using qel::p_array2d;
using qel::point2d;
using sites = std::vector<point2d>;

template <typename T>
using tree_of = qel::morpho::tree::data<image2d<T>, p_array2d>;

/// The sites that a new iterator visits. It walks twice: a walk started again has to be the same.
template <typename P>
sites walk(P p) {
  EXPECT_FALSE(p.is_valid());
  std::array<sites, 2> walks;
  for (sites& w : walks)
    for (p.start(); p.is_valid(); p.next()) w.push_back(p.to_site());
  EXPECT_EQ(walks[0], walks[1]);
  return walks[0];
}

/// The value types of images that have trees.
using tree_types = support::value_types_in<::testing::Types, bool, double>;

template <typename T>
image2d<T> image(const support::matrix<T>& m, const point2d& first = {0, 0}, unsigned border = 3) {
  image2d<T> result(box2d(first, first + dpoint2d(m.rows - 1, m.cols - 1)), border);
  for (std::size_t i = 0; i < m.values.size(); ++i) result(first + dpoint2d(i / m.cols, i % m.cols)) = m.values[i];
  return result;
}

/// The values of the domain, row by row.
template <typename T>
std::vector<T> values(const image2d<T>& ima) {
  std::vector<T> result;
  for (const point2d& p : walk(box2d::fwd_piter(ima.domain()))) result.push_back(ima(p));
  return result;
}

constexpr unsigned long seed = 20240229;

/// Calls `check(image, engine)` for random images of all kinds, from one site up, at the origin and at the ends of the
/// range of coordinates. Those without a border can't be flooded: union-find finds their trees.
template <typename T, typename F>
void for_random_images(F check) {
  support::random_engine engine(seed);
  for (const auto kind : support::flavours)
    for (const auto& [rows, cols] : {std::pair{1u, 1u}, {1u, 2u}, {1u, 9u}, {9u, 1u}, {4u, 5u}, {9u, 8u}})
      for (const unsigned border : {0u, 3u}) {
        const auto m = support::random_image<T>(rows, cols, kind, engine);
        const std::array<point2d, 3> places = {{{0, 0}, {-32765, 32756}, {32756, -300}}};
        const point2d& first = places[support::below(3, engine)];
        SCOPED_TRACE(::testing::Message() << "seed " << seed << ", border " << border << ", image " << m);
        check(image(m, first, border), engine);
      }
}

/// Calls `check(tree, max_tree, neighbourhood, engine)` for the four trees of each random image.
template <typename T, typename F>
void for_random_trees(F check) {
  for_random_images<T>([&](const image2d<T>& f, support::random_engine& engine) {
    for (const bool max_tree : {true, false})
      for (const neighb2d* nbh : {&c4(), &c8()}) {
        SCOPED_TRACE(::testing::Message() << (max_tree ? "max" : "min") << "-tree, c" << nbh->size());
        const auto s = max_tree ? qel::data::sort_psites_increasing(f) : qel::data::sort_psites_decreasing(f);
        check(tree_of<T>(f, s, *nbh), max_tree, *nbh, engine);
      }
  });
}

}  // namespace unit

#endif  // TESTS_UNIT_UNIT_HPP

// SPDX-License-Identifier: MIT

// The flood against the plain form, union-find: both find the same tree.

#include <qel/morpho/tree/nodes/node_table.hpp>

#include <qel/morpho/tree/compute_node_table.hpp>
#include <qel/morpho/tree/compute_parent.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/sweep/few_values.hpp>
#include <qel/morpho/tree/union_find/compute_parent_generic.hpp>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/unit/trace_capture.hpp"
#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace tree = qel::morpho::tree;

neighb2d neighbourhood(const std::vector<dpoint2d>& dps) {
  neighb2d result;
  for (const dpoint2d& dp : dps) result.win().insert(dp);
  return result;
}

const neighb2d six = neighbourhood({{-1, 0}, {-1, 1}, {0, -1}, {0, 1}, {1, -1}, {1, 0}});
const neighb2d far = neighbourhood({{-3, 2}, {-1, 0}, {0, -1}, {0, 1}, {1, 0}, {3, -2}});
const neighb2d too_far = neighbourhood({{-4, 0}, {-1, 0}, {0, -1}, {0, 1}, {1, 0}, {4, 0}});
const neighb2d one_sided = neighbourhood({{0, 1}, {1, 0}});
const neighb2d along_rows = neighbourhood({{0, -1}, {0, 1}});

/// All site arrays that a sweep may have: values and ties in either direction.
template <typename T>
std::vector<p_array2d> sweeps(const image2d<T>& f) {
  const auto less = [&](bool value_up, bool ties_up) {
    sites s = walk(box2d::fwd_piter(f.domain()));
    if (!ties_up) std::reverse(s.begin(), s.end());
    std::stable_sort(s.begin(), s.end(), [&](auto& p, auto& q) { return value_up ? f(p) < f(q) : f(q) < f(p); });
    return p_array2d(s);
  };
  return {less(true, true), less(true, false), less(false, true), less(false, false)};
}

template <typename I>
void expect_consistent(const tree::node_table<I>& table) {
  std::vector<bool> done(table.nnodes());
  ASSERT_EQ(table.upward.nsites(), table.nnodes());
  ASSERT_EQ(table.parent.size(), table.nnodes());
  for (const point2d& n : table.upward.vect_) {
    const unsigned k = tree::internal::node_sheet::number(n);
    const unsigned parent = tree::internal::node_sheet::number(table.parent[k]);
    EXPECT_EQ(table.number(table.canonical[k]), k);
    EXPECT_FALSE(done[k] || done[parent]);
    done[k] = true;
  }
}

template <typename T>
void expect_tree_of_union_find(const image2d<T>& f, const neighb2d& nbh, const p_array2d& s) {
  SCOPED_TRACE(::testing::Message() << nbh.size() << " neighbours");
  const auto table = tree::compute_node_table(f, nbh, s);
  const auto plain = values(tree::impl::generic::compute_parent(f, nbh, s));
  EXPECT_EQ(values(tree::compute_parent(f, nbh, s)), plain);
  EXPECT_EQ(values(tree::internal::parent_image_of(f, table)), plain);
  expect_consistent(table);
}

template <typename T>
class node_table : public ::testing::Test {};
TYPED_TEST_SUITE(node_table, tree_types, support::value_type_names);

TYPED_TEST(node_table, is_that_of_union_find_for_every_sweep_and_neighbourhood) {
  for_random_images<TypeParam>([](const image2d<TypeParam>& f, auto&) {
    for (const p_array2d& s : sweeps(f))
      for (const neighb2d* nbh : {&c4(), &c8(), &six, &far, &too_far, &one_sided, &along_rows})
        expect_tree_of_union_find(f, *nbh, s);
  });
}

/// 300 x 300 sites of which some share a value, and each has one of `nvalues` from `first` on, `step` apart.
template <typename T>
image2d<T> many_values(T first, std::uint64_t step, unsigned nvalues) {
  image2d<T> f(box2d({0, 0}, {299, 299}));
  std::mt19937 engine(7);
  for (const point2d& p : walk(box2d::fwd_piter(f.domain())))
    f(p) = static_cast<T>(static_cast<std::uint64_t>(first) + engine() % nvalues * step);
  return f;
}

// Sites wait in heaps here: by distances up to the greatest of 32 bits, with and without far values at the ends, and by
// ranks beyond, or where nearly all would wait in one heap.
TEST(node_table, is_that_of_union_find_for_many_values) {
  const auto check = [](const auto& f) {
    EXPECT_FALSE(tree::internal::few_values(f, true).are_few());
    for (const p_array2d& s : sweeps(f)) expect_tree_of_union_find(f, c4(), s);
  };
  const unsigned n = 150000;
  auto f = many_values<int>(INT_MIN, ~0u / (n - 1), n);
  f({7, 7}) = INT_MIN;
  f({8, 8}) = INT_MAX;
  check(f);
  auto close = many_values<int>(0, 1, n);
  close({0, 9}) = close({0, 11}) = INT_MIN;
  close({9, 0}) = INT_MAX;
  check(close);
  close({0, 10}) = INT_MIN + 5;
  close({10, 0}) = INT_MAX - 5;
  check(close);
  for (const std::int64_t beyond : {0, 1}) {
    auto wide = many_values<std::int64_t>(-70000, std::uint64_t{0xffffffff} / n, n);
    wide({0, 0}) = -80001;
    wide({0, 1}) = -80000;
    wide({299, 298}) = -80000 + std::int64_t{0xfffffffd} + beyond;
    wide({299, 299}) = std::numeric_limits<std::int64_t>::max();
    check(wide);
  }
  image2d<double> unordered(box2d({0, 0}, {1, 1}));
  qel::data::fill(unordered, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(tree::compute_node_table(unordered, c4(), sweeps(unordered)[0]).nnodes(), 4u);
}

// One value more than are few, and exactly as many; the same of 16 bits.
TEST(node_table, is_that_of_union_find_at_the_limit_of_short_levels) {
  image2d<unsigned short> f(box2d({0, 0}, {255, 255}));
  image2d<int> g(f.domain());
  unsigned k = 0;
  for (const point2d& p : walk(box2d::fwd_piter(f.domain()))) {
    f(p) = static_cast<unsigned short>(40503 * k++);
    g(p) = 2 * f(p);
  }
  std::set<std::string> outlines;
  const auto check = [&](const auto& image) {
    for (const p_array2d& s : sweeps(image)) {
      expect_tree_of_union_find(image, c4(), s);
      const trace_capture trace;
      tree::compute_node_table(image, c4(), s);
      outlines.insert(trace.outline() + trace.errors());
    }
  };
  check(f);
  for (const bool one_less : {false, true}) {
    if (one_less) g({100, 100}) = g({100, 101});
    EXPECT_EQ(tree::internal::few_values(g, true).are_few(), one_less);
    check(g);
  }
  EXPECT_EQ(outlines.size(), 1u);
}

// Products with the inverse of the hash's factor are small, so all values begin at one slot.
TEST(node_table, is_that_of_union_find_for_values_made_to_collide) {
  image2d<std::int64_t> f(box2d({0, 0}, {39, 49}));
  std::uint64_t k = 0;
  for (const point2d& p : walk(box2d::fwd_piter(f.domain())))
    f(p) = static_cast<std::int64_t>(0xf1de83e19937733d * k++);
  EXPECT_FALSE(tree::internal::few_values(f, true).are_few());
  for (const p_array2d& s : sweeps(f)) expect_tree_of_union_find(f, c4(), s);
}

TEST(node_table, of_no_sites_has_no_nodes) {
  const image2d<int> f(box2d({0, 0}, {1, 1}));
  EXPECT_EQ(tree::compute_node_table(f, c4(), p_array2d()).nnodes(), 0u);
  EXPECT_EQ(tree::compute_node_table(f, along_rows, p_array2d()).nnodes(), 0u);
}

TEST(node_sheet, numbers_and_sites_lead_to_each_other) {
  using sheet = tree::internal::node_sheet;
  for (const unsigned n : {1u, 2u, 32768u, 32769u, 1073676289u}) {
    EXPECT_EQ(sheet::number(sheet::site(n - 1)), n - 1);
    EXPECT_TRUE(sheet::domain(n).has(sheet::site(n - 1)));
    EXPECT_GE(sheet::domain(n).nsites(), n);
    EXPECT_LT(sheet::domain(n).nsites() - n, 32768u);
  }
}

}  // namespace

// SPDX-License-Identifier: MIT

// The parent image, the tree with its lists, its walks and its attribute images.

#include <qel/morpho/tree/data.hpp>

#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>
#include <qel/morpho/tree/accumulate/accumulate_by_nodes.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/compute_parent.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/morpho/tree/sweep/sweep_sites.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace tree = qel::morpho::tree;

sites reversed(const sites& s) { return {s.rbegin(), s.rend()}; }

template <typename T>
class component_tree : public ::testing::Test {};
TYPED_TEST_SUITE(component_tree, tree_types, support::value_type_names);

// Two neighbours are connected once both are swept: the way up from the later one to the level of the other ends in the
// node of the other.
TYPED_TEST(component_tree, parents_lead_to_canonical_sites_and_join_neighbours) {
  for_random_trees<TypeParam>([](const auto& t, bool max_tree, const neighb2d& nbh, auto&) {
    image2d<unsigned> place(t.f().domain());
    for (unsigned i = 0; i < t.domain().nsites(); ++i) place(t.domain()[i]) = i;
    const auto node = [&](const point2d& p) { return t.is_a_node(p) ? p : t.parent(p); };
    EXPECT_EQ(t.parent(t.domain()[0]), t.domain()[0]);
    for (const point2d& p : t.domain().vect_) {
      const point2d q = t.parent(p);
      EXPECT_TRUE(t.is_a_node(q));
      EXPECT_TRUE(place(q) < place(p) || place(p) == 0);
      EXPECT_TRUE(max_tree ? t.f()(q) <= t.f()(p) : t.f()(q) >= t.f()(p));
      for (const point2d& n : walk(neighb2d::niter(nbh, p))) {
        if (!t.f().domain().has(n) || place(n) > place(p)) continue;
        point2d x = node(p);
        while (place(x) > place(node(n))) x = t.parent(x);
        EXPECT_EQ(x, node(n));
      }
    }
  });
}

TYPED_TEST(component_tree, lists_and_walks_are_in_the_reverse_of_the_sweep_order) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& t, auto&&...) {
    sites nodes, leaves;
    for (const point2d& p : reversed(t.domain().vect_)) {
      sites children;
      for (const point2d& n : nodes)
        if (t.parent(n) == p) children.push_back(n);
      EXPECT_EQ(t.children(p).vect_, children);
      EXPECT_EQ(t.is_a_leaf(p), children.empty());
      if (t.is_a_node(p)) nodes.push_back(p);
      if (t.is_a_node(p) && children.empty()) leaves.push_back(p);
    }
    EXPECT_EQ(t.nodes().vect_, nodes);
    EXPECT_EQ(t.leaves().vect_, leaves);
    EXPECT_EQ(t.nroots(), 1u);
    EXPECT_EQ(walk(tree::up_site_piter(t)), reversed(t.domain().vect_));
    EXPECT_EQ(walk(tree::up_node_piter(t)), nodes);
    EXPECT_EQ(walk(tree::dn_node_piter(t)), reversed(nodes));
  });
}

TEST(zfind_root, flattens_a_chain_of_a_million_sites) {
  image2d<point2d> zpar(box2d({0, 0}, {999, 999}));
  point2d previous(0, 0);
  for (const point2d& p : walk(box2d::fwd_piter(zpar.domain()))) {
    zpar(p) = previous;
    previous = p;
  }
  EXPECT_EQ(tree::internal::zfind_root(zpar, previous), point2d(0, 0));
  EXPECT_EQ(values(zpar), sites(1000000, point2d(0, 0)));
}

template <typename I>
using area = qel::morpho::attribute::card<I>;
template <typename I>
using diagonal = qel::morpho::attribute::diagonal<I>;
template <typename I>
using inertia = qel::morpho::attribute::inertia<I>;
template <typename I>
using deviation = qel::morpho::attribute::deviation<I, float, float>;

TEST(attribute_image, the_border_keeps_the_accumulator_that_it_started_from) {
  using I = image2d<signed char>;
  const I f = image<signed char>({1, 2, {1, 2}});
  const auto s = qel::data::sort_psites_increasing(f);
  area<I> three;
  three.set_count(3);
  image2d<area<I>> accumulators;
  const auto a = compute_attribute_image(three, tree_of<signed char>(f, s, c4()), &accumulators);
  EXPECT_EQ(values(a), (std::vector<unsigned>{2, 1}));
  EXPECT_EQ(accumulators({0, 1}).to_result(), 1u);
  EXPECT_EQ(a({-1, 0}), 3u);
  EXPECT_EQ(accumulators({-3, -3}).to_result(), 3u);
}

/// Both trees give the attribute A of each node alike, to the last bit.
template <typename A, typename T, typename U>
void expect_same_attribute(const T& whole, const tree::node_tree<U>& nodes) {
  const auto a = compute_attribute_image(A(), whole);
  const auto b = compute_attribute_image(A(), nodes);
  unsigned differences = 0;
  for (unsigned k = 0; k < nodes.nnodes(); ++k) {
    const auto x = a(nodes.table().canonical[k]), y = b.element(k);
    if (x != y && !(std::isnan(x) && std::isnan(y))) ++differences;
  }
  EXPECT_EQ(differences, 0u);
}

/// Without this a fault could hide: by nodes or by sites, the results are the same.
template <typename A, typename T>
void expect_by_nodes(const tree::node_tree<T>& nodes) {
  if constexpr (tree::internal::goes_by_nodes<A, tree::node_tree<T>>) {
    EXPECT_TRUE(tree::internal::accumulate_by_nodes(A(), nodes, [](unsigned, const A&) {}));
  }
}

/// The same for all attributes, in both directions; the sites of the nodes turn as in a profile.
template <typename T>
void expect_same_attributes(const image2d<T>& f, const neighb2d& nbh, bool by_nodes) {
  using V = image2d<T>;
  tree::sweep_sites<V> swept(f, true);
  for (const auto& s : {qel::data::sort_psites_increasing(f), qel::data::sort_psites_decreasing(f)}) {
    const tree_of<T> whole(f, s, nbh);
    const tree::data<V, tree::sweep_sites<V>> lazy(f, swept, nbh);
    const tree::node_tree nodes(lazy);
    expect_same_attribute<area<V>>(whole, nodes);
    expect_same_attribute<diagonal<V>>(whole, nodes);
    expect_same_attribute<inertia<V>>(whole, nodes);
    if (by_nodes) expect_by_nodes<inertia<V>>(nodes);
    if constexpr (std::is_integral_v<T>) expect_same_attribute<deviation<V>>(whole, nodes);
    swept.turn();
  }
}

// So many sites that float sums round; when all values differ, more nodes than a row of the sheet has; on the board, a
// node with more children than are sorted.
TYPED_TEST(component_tree, nodes_alone_have_the_attributes_of_the_whole_tree) {
  support::random_engine engine(seed);
  const auto random_image = [&](unsigned rows, support::flavour kind, unsigned border) {
    return image(support::random_image<TypeParam>(rows, 230, kind, engine), {-300, -9000}, border);
  };
  expect_same_attributes<TypeParam>(random_image(150, support::flavour::few_levels, 0), c8(), false);
  expect_same_attributes<TypeParam>(random_image(150, support::flavour::all_distinct, 3), c8(), true);
  image2d<TypeParam> board = random_image(400, support::flavour::full_range, 3);
  for (const point2d& p : walk(box2d::fwd_piter(board.domain())))
    if ((p.row() + p.col()) % 2 != 0) board(p) = std::numeric_limits<TypeParam>::lowest();
  expect_same_attributes(board, c4(), false);
}

}  // namespace

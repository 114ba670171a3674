// SPDX-License-Identifier: MIT

// The four rules, and the completion of the image after them.

#include <qel/morpho/tree/filter/propagate_to_descendants.hpp>
#include <qel/morpho/tree/filter/rules.hpp>

#include <qel/data/duplicate.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/filter/batch/filter_planes.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/propagate_representative.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace filter = qel::morpho::tree::filter;
using qel::morpho::tree::propagate_representative;

/// Passes where the mark of a node is `least` or more. Marks are from 0 to 99.
auto marked(const image2d<int>& marks, int least) { return qel::pw::value_(marks) >= qel::pw::cst_(least); }

/// An image like `f` of random values of any magnitude up to a limit, border included.
template <typename V, typename T>
image2d<V> random_values(const image2d<T>& f, std::uint64_t limit, support::random_engine& engine) {
  image2d<V> result(f.domain(), f.border());
  for (unsigned i = 0; i < result.nelements(); ++i)
    result.element(i) = static_cast<V>((engine() >> support::below(64, engine)) % limit);
  return result;
}

template <typename T>
class filter_rules : public ::testing::Test {};
TYPED_TEST_SUITE(filter_rules, support::value_types, support::value_type_names);

// The definition: from the leaves upward, each node that fails moves its whole subtree. Everything wraps.
TYPED_TEST(filter_rules, sub_equals_the_moves_of_whole_subtrees) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    const auto marks = random_values<int>(tree.f(), 100, engine);
    for (const auto& f : {tree.f(), random_values<TypeParam>(tree.f(), ~0ul, engine)}) {
      auto fast = duplicate(f), told = duplicate(f);
      filter::sub(tree, fast, marked(marks, 5));
      for (const point2d& n : tree.nodes().vect_) {
        if (marks(n) >= 5) continue;
        const auto v = static_cast<std::uint64_t>(told(n)) - static_cast<std::uint64_t>(told(tree.parent(n)));
        filter::propagate_to_descendants(tree, told, n, static_cast<TypeParam>(v));
      }
      EXPECT_EQ(values(fast), values(told));
    }
  });
}

TYPED_TEST(filter_rules, laws) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    const auto& f = tree.f();
    const point2d root = tree.domain()[0];
    const auto marks = random_values<int>(f, 100, engine);
    const int least = static_cast<int>(support::below(100, engine));
    const qel::morpho::tree::node_tree nodes(tree);
    image2d<int> node_marks(nodes.f().domain(), 0);
    for (unsigned k = 0; k < nodes.nnodes(); ++k) node_marks.element(k) = marks(nodes.table().canonical[k]);
    for (const std::string rule : {"min", "max", "direct", "sub"}) {
      SCOPED_TRACE(rule);
      auto g = duplicate(f), all_removed = duplicate(f), of_nodes = duplicate(nodes.f());
      filter::apply_rule(rule, tree, g, marked(marks, 0));
      EXPECT_EQ(values(g), values(f));

      filter::apply_rule(rule, tree, g, marked(marks, least));
      EXPECT_EQ(g(root), f(root));
      auto deciding = duplicate(marks);  // the mark that decides about a node under the rule
      const auto& leaves_first = tree.nodes().vect_;
      for (auto n = leaves_first.begin(); rule == "max" && n != leaves_first.end(); ++n)
        deciding(tree.parent(*n)) = std::max(deciding(tree.parent(*n)), deciding(*n));
      for (auto n = leaves_first.rbegin(); rule == "min" && n != leaves_first.rend(); ++n)
        deciding(*n) = std::min(deciding(*n), deciding(tree.parent(*n)));
      for (const point2d& p : tree.domain().vect_) {
        const bool removed = tree.is_a_node(p) && deciding(p) < least;
        if (removed || rule != "sub" || !tree.is_a_node(p)) {
          EXPECT_EQ(g(p), removed ? g(tree.parent(p)) : f(p));
        }
      }
      filter::apply_rule(rule, nodes, of_nodes, marked(node_marks, least));
      for (unsigned k = 0; k < nodes.nnodes(); ++k) EXPECT_EQ(of_nodes.element(k), g(nodes.table().canonical[k]));

      filter::apply_rule(rule, tree, all_removed, marked(marks, 100));
      propagate_representative(tree, all_removed);
      EXPECT_EQ(values(all_removed), std::vector<TypeParam>(tree.domain().nsites(), f(root)));
    }
  });
}

/// The node values of each plane.
template <typename T>
struct collected_planes {
  std::vector<std::vector<T>> planes;

  void filtered(const qel::morpho::tree::node_tree<tree_of<T>>& nodes,
                const qel::morpho::tree::plane_values<T>& values) {
    for (std::size_t k = 0; k < values.size(); ++k) {
      planes.emplace_back();
      for (unsigned node = 0; node < nodes.nnodes(); ++node) planes.back().push_back(values.of(node)[k]);
    }
  }
};

/// Checks each rule by many predicates at once against one after the other: random attributes and thresholds, in no
/// order, some equal and some NaN.
template <typename T>
void expect_batches_to_equal_single_calls(const tree_of<T>& tree, support::random_engine& engine) {
  const qel::morpho::tree::node_tree nodes(tree);
  const auto attribute = random_values<double>(nodes.f(), 100, engine);
  std::vector<decltype(qel::pw::value_(attribute) >= qel::pw::cst_(0.))> reaches;
  for (std::size_t n = 1 + support::below(20, engine); n > 0; --n) {
    const auto threshold = static_cast<double>(support::below(100, engine));
    reaches.push_back(qel::pw::value_(attribute) >= qel::pw::cst_(threshold > 95 ? std::nan("") : threshold));
  }
  const std::vector<std::function<bool(const point2d&)>> plain(reaches.begin(), reaches.end());
  const auto check = [&](const auto& rule) {
    SCOPED_TRACE(rule.name);
    collected_planes<T> batch;
    filter_planes(nodes, reaches, rule, batch);
    collected_planes<T> one_by_one;
    filter_planes(
        nodes, plain, [&](const auto& t, auto& f, const auto& keep) { rule(t, f, keep); }, one_by_one);
    ASSERT_EQ(batch.planes.size(), reaches.size());
    for (std::size_t i = 0; i < reaches.size(); ++i) {
      auto single = duplicate(nodes.f());
      rule(nodes, single, reaches[i]);
      for (unsigned k = 0; k < nodes.nnodes(); ++k) {
        ASSERT_EQ(batch.planes[i][k], single.element(k));
        ASSERT_EQ(one_by_one.planes[i][k], single.element(k));
      }
    }
  };
  std::apply([&](const auto&... rule) { (check(rule), ...); }, filter::rules);
}

template <typename T>
class filter_batch : public ::testing::Test {};
TYPED_TEST_SUITE(filter_batch, tree_types, support::value_type_names);

TYPED_TEST(filter_batch, equals_single_calls) {
  neighb2d along_rows;
  for (const dpoint2d& dp : {dpoint2d(0, -1), dpoint2d(0, 1)}) along_rows.win().insert(dp);
  for_random_trees<TypeParam>([&](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    expect_batches_to_equal_single_calls(tree, engine);
    expect_batches_to_equal_single_calls(tree_of<TypeParam>(tree.f(), tree.domain(), along_rows),
                                         engine);  // many roots
  });
}

TEST(filter_batch, equals_single_calls_on_a_sheet_of_many_rows) {
  support::random_engine engine(seed);
  const auto f = image(support::random_image<int>(300, 301, support::flavour::all_distinct, engine));
  const auto s = qel::data::sort_psites_increasing(f);
  expect_batches_to_equal_single_calls(tree_of<int>(f, s, c4()), engine);
}

TEST(filter_rules, the_height_of_the_tree_is_not_limited_by_the_stack) {
  image2d<int> f(box2d({0, 0}, {0, 29999}));
  for (short col = 0; col < 30000; ++col) f({0, col}) = col;
  const auto s = qel::data::sort_psites_increasing(f);
  const tree_of<int> tree(f, s, c4());
  auto g = duplicate(f);
  filter::propagate_to_descendants(tree, g, point2d(0, 1), -7);
  EXPECT_EQ(g({0, 0}), 0);
  EXPECT_EQ(g({0, 29999}), 30006);
}

TYPED_TEST(filter_rules, propagate_representative_completes_what_is_not_a_node_and_no_more) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    auto g = random_values<TypeParam>(tree.f(), ~0ul, engine);
    auto expected = duplicate(g);
    for (const point2d& p : tree.domain().vect_)
      if (!tree.is_a_node(p)) expected(p) = g(tree.parent(p));
    propagate_representative(tree, g);
    for (unsigned i = 0; i < g.nelements(); ++i) EXPECT_EQ(g.element(i), expected.element(i));
  });
}

TEST(filter_planes, of_a_tree_without_nodes_are_empty) {
  const image2d<int> f(box2d({0, 0}, {1, 1}));
  const p_array2d no_sites;
  const tree_of<int> whole(f, no_sites, c4());
  const qel::morpho::tree::node_tree nodes(whole);
  const auto area = compute_attribute_image(qel::morpho::attribute::card<image2d<int>>(), nodes);
  collected_planes<int> sink;
  const std::vector reaches(2, qel::pw::value_(area) >= qel::pw::cst_(1u));
  filter_planes(nodes, reaches, filter::rule::min(), sink);
  EXPECT_EQ(sink.planes.size(), 2u);
}

}  // namespace

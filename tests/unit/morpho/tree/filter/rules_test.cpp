// SPDX-License-Identifier: MIT

// The four rules, and the completion of the image after them.

#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/propagate_to_descendants.hpp>
#include <qel/morpho/tree/filter/sub.hpp>

#include <qel/core/opt_at.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/tree/compute_attribute_image.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/propagate_representative.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <cstdint>
#include <string>

#include "tests/support/minimal_image.hpp"
#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace filter = qel::morpho::tree::filter;
using qel::morpho::tree::propagate_representative;

/// Passes where an image is true, and counts how often it is asked.
struct flagged : qel::Function_v2b<flagged> {
  using result = bool;
  explicit flagged(const image2d<bool>& flags_) : flags(flags_) {}

  bool operator()(const point2d& p) const {
    ++asked;
    return flags(p);
  }

  const image2d<bool>& flags;
  mutable unsigned asked = 0;
};

const std::vector<std::string> rules = {"min", "max", "direct", "sub"};

template <typename T, typename F, typename P>
void apply(const std::string& rule, const T& tree, F& f, const P& pred) {
  if (rule == "min") filter::min(tree, f, pred);
  if (rule == "max") filter::max(tree, f, pred);
  if (rule == "direct") filter::direct(tree, f, pred);
  if (rule == "sub") filter::sub(tree, f, pred);
}

/// An image like `f` whose elements `make()` gives, border included.
template <typename V, typename T, typename F>
image2d<V> made_by(const image2d<T>& f, F make) {
  image2d<V> result(f.domain(), f.border());
  for (unsigned i = 0; i < result.nelements(); ++i) result.element(i) = make();
  return result;
}

template <typename T>
image2d<T> random_values(const image2d<T>& f, support::random_engine& engine) {
  return made_by<T>(f, [&] { return static_cast<T>(engine() >> support::below(64, engine)); });
}

template <typename T>
image2d<bool> random_flags(const image2d<T>& f, support::random_engine& engine) {
  const std::size_t one_in = 1 + support::below(4, engine);
  return made_by<bool>(f, [&] { return support::below(one_in, engine) == 0; });
}

template <typename T>
class filter_rules : public ::testing::Test {};
TYPED_TEST_SUITE(filter_rules, support::value_types, support::value_type_names);

TYPED_TEST(filter_rules, example_worked_out_by_hand) {
  using I = image2d<TypeParam>;
  const I f = image<TypeParam>({1, 5, {4, 9, 3, 5, 1}});
  const auto s = qel::data::sort_psites_increasing(f);
  const tree_of<TypeParam> tree(f, s, c4());
  const auto deviation = compute_attribute_image(qel::morpho::attribute::deviation<I, float, float>(), tree);
  const float expected[] = {2.5f, 0.0f, 2.2776f, 0.0f, 2.6533f};
  for (short col = 0; col < 5; ++col) EXPECT_NEAR(deviation({0, col}), expected[col], 5e-5f);
  const std::vector<std::vector<TypeParam>> filtered = {
      {1, 1, 1, 1, 1}, {4, 4, 3, 3, 1}, {4, 4, 1, 1, 1}, {2, 2, 1, 1, 1}};
  for (std::size_t i = 0; i < rules.size(); ++i) {
    auto g = duplicate(f);
    apply(rules[i], tree, g, qel::pw::value_(deviation) >= qel::pw::cst_(2.5f));
    propagate_representative(tree, g);
    EXPECT_EQ(values(g), filtered[i]) << rules[i];
  }
}

// The definition: from the leaves upward, each node that fails moves its whole subtree. All wraps.
TYPED_TEST(filter_rules, sub_equals_the_moves_of_whole_subtrees) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    const auto flags = random_flags(tree.f(), engine);
    for (const auto& f : {duplicate(tree.f()), random_values(tree.f(), engine)}) {
      auto fast = duplicate(f), told = duplicate(f);
      filter::sub(tree, fast, flagged(flags));
      for (const point2d& n : tree.nodes().vect_) {
        if (flags(n)) continue;
        const auto v = static_cast<std::uint64_t>(told(n)) - static_cast<std::uint64_t>(told(tree.parent(n)));
        filter::propagate_to_descendants(tree, told, n, static_cast<TypeParam>(v));
      }
      EXPECT_EQ(values(fast), values(told));
    }
  });
}

TYPED_TEST(filter_rules, give_the_same_on_the_nodes_alone) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    const qel::morpho::tree::node_tree nodes(tree);
    const auto flags = random_flags(tree.f(), engine);
    image2d<bool> node_flags(nodes.f().domain(), 0);
    for (unsigned k = 0; k < nodes.nnodes(); ++k) node_flags.element(k) = flags(nodes.table().canonical[k]);
    for (const std::string& rule : rules) {
      auto g = duplicate(tree.f());
      auto of_nodes = duplicate(nodes.f());
      apply(rule, tree, g, flagged(flags));
      apply(rule, nodes, of_nodes, flagged(node_flags));
      for (unsigned k = 0; k < nodes.nnodes(); ++k)
        EXPECT_EQ(of_nodes.element(k), g(nodes.table().canonical[k])) << rule;
    }
  });
}

TEST(filter_rules, laws) {
  for_random_trees<short>([](const tree_of<short>& tree, bool, auto&, auto& engine) {
    const point2d root = tree.domain()[0];
    const auto all = made_by<bool>(tree.f(), [] { return true; });
    const auto none = made_by<bool>(tree.f(), [] { return false; });
    const auto some = random_flags(tree.f(), engine);
    for (const std::string& rule : rules) {
      SCOPED_TRACE(rule);
      auto g = duplicate(tree.f());
      apply(rule, tree, g, flagged(all));
      EXPECT_EQ(values(g), values(tree.f()));

      const flagged pred(some);
      apply(rule, tree, g, pred);
      EXPECT_LE(pred.asked, tree.nodes().nsites());
      EXPECT_EQ(g(root), tree.f()(root));
      for (const point2d& p : tree.domain().vect_) {
        const bool removed = tree.is_a_node(p) && !some(p) && rule != "max";
        if (removed || !tree.is_a_node(p)) {
          EXPECT_EQ(g(p), removed ? g(tree.parent(p)) : tree.f()(p));
        }
      }

      g = duplicate(tree.f());
      apply(rule, tree, g, flagged(none));
      propagate_representative(tree, g);
      EXPECT_EQ(values(g), std::vector<short>(tree.domain().nsites(), tree.f()(root)));
    }
  });
}

TEST(filter_rules, min_asks_nothing_below_a_removed_node) {
  const auto f = image<int>({1, 4, {1, 2, 3, 4}});
  const auto s = qel::data::sort_psites_increasing(f);
  const tree_of<int> tree(f, s, c4());
  image2d<bool> flags = made_by<bool>(f, [] { return true; });
  flags({0, 1}) = false;
  const flagged pred(flags);
  auto g = duplicate(f);
  filter::min(tree, g, pred);
  EXPECT_EQ(values(g), (std::vector<int>{1, 1, 1, 1}));
  EXPECT_EQ(pred.asked, 2u);
}

TEST(filter_rules, the_height_of_the_tree_is_not_limited_by_the_stack) {
  image2d<int> f(box2d({0, 0}, {0, 29999}));
  for (short col = 0; col < 30000; ++col) f({0, col}) = col;
  const auto s = qel::data::sort_psites_increasing(f);
  const tree_of<int> tree(f, s, c4());
  const auto none = made_by<bool>(f, [] { return false; });
  auto g = duplicate(f);
  filter::sub(tree, g, flagged(none));
  EXPECT_EQ(values(g), std::vector<int>(30000, 0));
  filter::propagate_to_descendants(tree, g, point2d(0, 1), -7);
  EXPECT_EQ(g({0, 0}), 0);
  EXPECT_EQ(g({0, 29999}), 7);
}

TEST(filter_rules, need_no_more_than_the_image_concept) {
  const auto f = image<int>({1, 3, {1, 2, 3}});
  const auto s = qel::data::sort_psites_increasing(f);
  const tree_of<int> tree(f, s, c4());
  support::minimal_image<int> g(f.domain(), {1, 2, 3});
  const support::minimal_image<double> attribute(f.domain(), {3, 2, 1});
  filter::direct(tree, g, qel::pw::value_(attribute) >= qel::pw::cst_(1.5));
  EXPECT_EQ(qel::opt::at(g, 0, 2), 2);
  filter::propagate_to_descendants(tree, g, point2d(0, 1), 5);
  EXPECT_EQ(qel::opt::at(g, 0, 2), -3);
}

TYPED_TEST(filter_rules, propagate_representative_completes_what_is_not_a_node_and_no_more) {
  for_random_trees<TypeParam>([](const tree_of<TypeParam>& tree, bool, auto&, auto& engine) {
    auto g = random_values(tree.f(), engine);
    auto expected = duplicate(g);
    for (auto p = tree.domain().vect_.rbegin(); p != tree.domain().vect_.rend(); ++p) {
      const point2d q = tree.parent(*p);
      if (q != *p && tree.f()(q) == tree.f()(*p)) expected(*p) = expected(q);
    }
    propagate_representative(tree, g);
    for (unsigned i = 0; i < g.nelements(); ++i) EXPECT_EQ(g.element(i), expected.element(i));
  });
}

}  // namespace

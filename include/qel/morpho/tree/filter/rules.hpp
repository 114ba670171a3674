// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_RULES_HPP
#define QEL_MORPHO_TREE_FILTER_RULES_HPP

// The rules, as objects and by the names that users know. The plain form of each is a function for one predicate, such
// as `filter::min`; the fast form is its namesake for many, such as `filter::batch::min`. The test
// `filter_batch.equals_single_calls` holds the two equal. `filter_rules.laws` and
// `filter_rules.sub_equals_the_moves_of_whole_subtrees` hold the plain forms to their definitions.

#include <qel/morpho/tree/filter/batch/batch.hpp>
#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/sub.hpp>
#include <qel/morpho/tree/node_tree.hpp>

#include <string>
#include <tuple>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

/// A rule is a type with a name and a call; the rules of `filter` are function templates, which can't be passed on.
/// With `batch`, which a rule may lack, it gives the results of many predicates at once. These are final: a class that
/// derived from one and replaced the call alone would still inherit `batch`.
namespace rule {

/// A node survives if it and all its ancestors pass.
struct min final {
  /// What users call it.
  static constexpr char name[] = "min";
  /// See `filter::min`.
  template <typename T, typename F, typename P>
  void operator()(const T& tree, F& image, const P& keep) const {
    filter::min(tree, image, keep);
  }
  /// See `filter::batch::min`.
  template <typename T, typename P>
  auto batch(const node_tree<T>& nodes, const P* first, const P* last) const {
    return filter::batch::min(nodes, first, last);
  }
};

/// A node survives if it or any of its descendants passes.
struct max final {
  /// What users call it.
  static constexpr char name[] = "max";
  /// See `filter::max`.
  template <typename T, typename F, typename P>
  void operator()(const T& tree, F& image, const P& keep) const {
    filter::max(tree, image, keep);
  }
  /// See `filter::batch::max`.
  template <typename T, typename P>
  auto batch(const node_tree<T>& nodes, const P* first, const P* last) const {
    return filter::batch::max(nodes, first, last);
  }
};

/// Each node is judged by itself.
struct direct final {
  /// What users call it.
  static constexpr char name[] = "direct";
  /// See `filter::direct`.
  template <typename T, typename F, typename P>
  void operator()(const T& tree, F& image, const P& keep) const {
    filter::direct(tree, image, keep);
  }
  /// See `filter::batch::direct`.
  template <typename T, typename P>
  auto batch(const node_tree<T>& nodes, const P* first, const P* last) const {
    return filter::batch::direct(nodes, first, last);
  }
};

/// A node that fails takes its subtree down with it.
struct sub final {
  /// What users call it.
  static constexpr char name[] = "sub";
  /// See `filter::sub`.
  template <typename T, typename F, typename P>
  void operator()(const T& tree, F& image, const P& keep) const {
    filter::sub(tree, image, keep);
  }
  /// See `filter::batch::sub`.
  template <typename T, typename P>
  auto batch(const node_tree<T>& nodes, const P* first, const P* last) const {
    return filter::batch::sub(nodes, first, last);
  }
};

}  // namespace rule

/// All rules.
inline constexpr auto rules = std::make_tuple(rule::min(), rule::max(), rule::direct(), rule::sub());

/// Calls `use(rule)` with the rule called `name`, case included; false if there is none.
template <typename Use>
bool with_rule(const std::string& name, Use use) {
  const auto used = [&](const auto& candidate) {
    if (name != candidate.name) return false;
    use(candidate);
    return true;
  };
  return std::apply([&](const auto&... candidates) { return (used(candidates) || ...); }, rules);
}

/// Calls the rule called `name`; false if there is none, and then nothing changes.
template <typename T, typename F, typename P>
bool apply_rule(const std::string& name, const T& tree, F& image, const P& keep) {
  return with_rule(name, [&](const auto& rule) { rule(tree, image, keep); });
}

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_RULES_HPP

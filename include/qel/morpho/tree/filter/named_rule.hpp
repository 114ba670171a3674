// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_NAMED_RULE_HPP
#define QEL_MORPHO_TREE_FILTER_NAMED_RULE_HPP

#include <qel/morpho/tree/filter/batch/filter_each.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/filter/rules.hpp>

#include <string>
#include <utility>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

/// The rule of a name, looked up at each call. Only then does an unknown name call `unknown()`.
template <typename Unknown>
class named_rule {
 public:
  /// \param name    that of one of `rules`, or any other text.
  /// \param unknown called without arguments. If it returns, nothing is filtered.
  named_rule(std::string name, Unknown unknown) : name_(std::move(name)), unknown_(std::move(unknown)) {}

  /// Changes `image` as the rule does. \throws what the rule and `unknown` throw.
  template <typename T, typename F, typename P>
  void operator()(const T& tree, F& image, const P& keep) const {
    if (!apply_rule(name_, tree, image, keep)) unknown_();
  }

  /// The same for many predicates at once: see `filter_each`.
  template <typename T, typename P>
  plane_values<typename T::value> batch(const T& nodes, const P* first, const P* last) const {
    plane_values<typename T::value> values(0, 0);
    const auto apply = [&](const auto& rule) { values = filter_each(nodes, first, last, rule); };
    if (!with_rule(name_, apply)) unknown_();
    return values;
  }

 private:
  std::string name_;
  Unknown unknown_;
};

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_NAMED_RULE_HPP

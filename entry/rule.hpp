// SPDX-License-Identifier: MIT
#ifndef ENTRY_RULE_HPP
#define ENTRY_RULE_HPP

// The filtering rules that a user can ask for by name.

#include "entry/host.hpp"
#include "entry/messages.hpp"

#include <qel/morpho/tree/filter/rules.hpp>
#include <qel/morpho/tree/filter_each.hpp>

#include <string>
#include <vector>

namespace entry {

/// The rule of this name. Judged when it is called, and not before: a call with an unknown name ends there.
struct named_rule {
  std::string name;

  template <typename T, typename F, typename P>
  void operator()(const T& tree, F& image, const P& keep) const {
    if (!qel::morpho::tree::filter::apply_rule(name, tree, image, keep)) mexErrMsgTxt(messages::unknown_rule);
  }

  /// The same for many predicates at once, as far as the rule can do so.
  template <typename T, typename P>
  std::vector<typename T::function> batch(const T& nodes, const P* first, const P* last) const {
    namespace tree = qel::morpho::tree;
    std::vector<typename T::function> values;
    const auto apply = [&](const auto& rule) { values = tree::filter_each(nodes, first, last, rule); };
    if (!tree::filter::with_rule(name, apply)) mexErrMsgTxt(messages::unknown_rule);
    return values;
  }
};

}  // namespace entry

#endif  // ENTRY_RULE_HPP

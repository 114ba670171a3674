// SPDX-License-Identifier: MIT
#ifndef ENTRY_RULE_HPP
#define ENTRY_RULE_HPP

// The filtering rules that a user can ask for: their names and what each calls.

#include "entry/host.hpp"
#include "entry/messages.hpp"

#include <qel/core/concept/function.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/sub.hpp>

#include <string>
#include <tuple>

namespace entry {

/// A filtering rule is a type with a name and an operation: the operations are templates, which have no address.
namespace rule {

struct min {
  static constexpr char name[] = "min";
  template <typename T, typename F, typename P>
  static void apply(const T& tree, F& image, const P& keep) {
    qel::morpho::tree::filter::min(tree, image, keep);
  }
};

struct max {
  static constexpr char name[] = "max";
  template <typename T, typename F, typename P>
  static void apply(const T& tree, F& image, const P& keep) {
    qel::morpho::tree::filter::max(tree, image, keep);
  }
};

struct direct {
  static constexpr char name[] = "direct";
  template <typename T, typename F, typename P>
  static void apply(const T& tree, F& image, const P& keep) {
    qel::morpho::tree::filter::direct(tree, image, keep);
  }
};

struct sub {
  static constexpr char name[] = "sub";
  template <typename T, typename F, typename P>
  static void apply(const T& tree, F& image, const P& keep) {
    qel::morpho::tree::filter::sub(tree, image, keep);
  }
};

}  // namespace rule

/// All of them.
inline constexpr auto rules = std::make_tuple(rule::min(), rule::max(), rule::direct(), rule::sub());

/// Changes the nodes of `tree` in `image` by the rule called `name`; ends the call if there is no such rule. Names are
/// compared exactly, case included.
template <typename T, typename F, typename P>
void apply_rule(const std::string& name, const T& tree, qel::Image<F>& image, const qel::Function_v2b<P>& keep) {
  const auto applied = [&](auto candidate) {
    if (name != candidate.name) return false;
    candidate.apply(tree, image, keep);
    return true;
  };
  const bool known = std::apply([&](auto... candidates) { return (applied(candidates) || ...); }, rules);
  if (!known) mexErrMsgTxt(messages::unknown_rule);
}

}  // namespace entry

#endif  // ENTRY_RULE_HPP

// SPDX-License-Identifier: MIT
#ifndef ENTRY_RULE_HPP
#define ENTRY_RULE_HPP

// The filtering rules by name.

#include "entry/host.hpp"
#include "entry/messages.hpp"

#include <qel/core/concept/function.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/sub.hpp>

#include <string>

namespace entry {

namespace rule {

inline constexpr char min[] = "min";
inline constexpr char max[] = "max";
inline constexpr char direct[] = "direct";
inline constexpr char sub[] = "sub";

}  // namespace rule

/// Changes the nodes of `tree` in `image` by the rule called `name`; ends the call if there is no such rule.
template <typename T, typename F, typename P>
void apply_rule(const std::string& name, const T& tree, qel::Image<F>& image, const qel::Function_v2b<P>& keep) {
  namespace filter = qel::morpho::tree::filter;
  if (name == rule::min) {
    filter::min(tree, image, keep);
  } else if (name == rule::max) {
    filter::max(tree, image, keep);
  } else if (name == rule::direct) {
    filter::direct(tree, image, keep);
  } else if (name == rule::sub) {
    filter::sub(tree, image, keep);
  } else {
    mexErrMsgTxt(messages::unknown_rule);
  }
}

}  // namespace entry

#endif  // ENTRY_RULE_HPP

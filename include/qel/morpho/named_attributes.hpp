// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_NAMED_ATTRIBUTES_HPP
#define QEL_MORPHO_NAMED_ATTRIBUTES_HPP

// The attributes by the names that users know, each with the rule that suits it.

#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>
#include <qel/morpho/tree/filter/rules.hpp>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <tuple>

namespace qel {

namespace morpho {

/// An attribute, computed by the accumulator A. Thresholds have the type of A's result.
template <typename A>
struct named_attribute {
  /// The accumulator that computes it.
  using accumulator = A;
  /// A threshold.
  using threshold = typename A::result;

  const char* short_name;    ///< one letter
  const char* name;          ///< the word
  const char* default_rule;  ///< the rule of a call that gives none

  /// Names are compared exactly, case included.
  bool is_called(const std::string& text) const {
    const auto names = {short_name, name};
    return std::find(names.begin(), names.end(), text) != names.end();
  }
};

/// The attributes of images of type I. Where one never shrinks from a node to its parent (`attribute::is_increasing`),
/// all rules agree. Where it may shrink, "sub" keeps the contrast of what stands on a removed node.
template <typename I>
inline constexpr auto named_attributes =
    std::make_tuple(named_attribute<attribute::card<I>>{"a", "area", tree::filter::rule::min::name},
                    named_attribute<attribute::diagonal<I>>{"d", "diagonal", tree::filter::rule::min::name},
                    named_attribute<attribute::inertia<I>>{"i", "inertia", tree::filter::rule::sub::name},
                    named_attribute<attribute::deviation<I, float, float>>{"s", "std", tree::filter::rule::sub::name});

/// Calls `use(attribute)` with the attribute of images of type I that is called `name`; false if there is none.
template <typename I, typename Use>
bool with_attribute(const std::string& name, Use use) {
  const auto used = [&](const auto& candidate) {
    if (!candidate.is_called(name)) return false;
    use(candidate);
    return true;
  };
  return std::apply([&](const auto&... candidates) { return (used(candidates) || ...); }, named_attributes<I>);
}

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_NAMED_ATTRIBUTES_HPP

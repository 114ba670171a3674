// SPDX-License-Identifier: MIT
#ifndef ENTRY_ATTRIBUTE_HPP
#define ENTRY_ATTRIBUTE_HPP

// The attributes that a user can ask for: their names, how they are computed and which rule suits them.

#include "entry/rule.hpp"

#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <tuple>

namespace entry {

/// An attribute, computed by the accumulator A. Thresholds have the type of A's result.
template <typename A>
struct attribute {
  using accumulator = A;
  using threshold = typename A::result;

  const char* short_name;
  const char* name;
  const char* default_rule;  ///< the rule of a call that gives none

  /// Names are compared exactly, case included.
  bool is_called(const std::string& text) const {
    const auto names = {short_name, name};
    return std::find(names.begin(), names.end(), text) != names.end();
  }
};

/// The attributes of images of type I. Area and diagonal never shrink from a node to its parent, so that the
/// four rules agree. The other two may, and "sub" keeps the contrast of what
/// stands on a removed node.
template <typename I>
inline constexpr auto attributes =
    std::make_tuple(attribute<qel::morpho::attribute::card<I>>{"a", "area", rule::min::name},
                    attribute<qel::morpho::attribute::diagonal<I>>{"d", "diagonal", rule::min::name},
                    attribute<qel::morpho::attribute::inertia<I>>{"i", "inertia", rule::sub::name},
                    attribute<qel::morpho::attribute::deviation<I, float, float>>{"s", "std", rule::sub::name});

}  // namespace entry

#endif  // ENTRY_ATTRIBUTE_HPP

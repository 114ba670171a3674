// SPDX-License-Identifier: MIT
#ifndef ENTRY_PROFILE_HPP
#define ENTRY_PROFILE_HPP

// The attribute profile as a host wants it: column by column, plane after plane.

#include "entry/array_bridge.hpp"
#include "entry/host.hpp"
#include "entry/messages.hpp"

#include <qel/accu/accumulator.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/morpho/attribute_profile.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/filter/named_rule.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace entry {

/// Writes planes from `position` on, which moves behind the last one.
template <typename V>
struct column_planes {
  V*& position;
  orientation lies;

  template <typename T, typename U>
  void filtered(const T& nodes, const qel::morpho::tree::plane_values<U>& values) {
    const auto& number = nodes.table().number;
    const std::size_t plane = number.domain().nsites();
    for_each_column_piece(number, lies, [&](const unsigned* numbers, std::size_t n, std::size_t first) {
      values.spread(numbers, n, position + first, plane);
    });
    position += values.size() * plane;
  }

  template <typename I>
  void input(const I& image) {
    write_plane(image, lies, position);
    position += image.domain().nsites();
  }
};

/// The rule of this name. Only its first use ends a call with an unknown name.
inline auto rule_called(const std::string& name) {
  return qel::morpho::tree::filter::named_rule(name, [] { mexErrMsgTxt(messages::unknown_rule); });
}

}  // namespace entry

/// Writes the profile of an image of S pixels, N thresholds: 2N + 1 planes of S elements, each column-major.
///
/// The planes and their order are those of `qel::morpho::attribute_profile`.
///
/// \param position  start of the output; stands behind the last plane on return.
/// \param a         the attribute in its initial state, not changed.
/// \param lambdas   thresholds, in the unit of the attribute. A node whose attribute equals one stays; under a NaN all
///                  nodes fail.
/// \param lies      turned only if the attribute does not depend on the order of rows and columns.
/// \param rule      an unknown one ends the call before the first plane, not earlier.
/// \throws std::bad_alloc.
template <typename I, typename V, typename A, typename N, typename L>
void _compute_attribute_profile(const qel::Image<I>& image, V*& position, const qel::Accumulator<A>& a,
                                const qel::Neighborhood<N>& neighborhood, std::vector<L> lambdas, std::string rule,
                                entry::orientation lies = entry::orientation::upright) {
  qel::morpho::attribute_profile(image, neighborhood, a, lambdas, entry::rule_called(rule),
                                 entry::column_planes<V>{position, lies});
}

#endif  // ENTRY_PROFILE_HPP

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
#include <qel/morpho/tree/filter/named_rule.hpp>

#include <string>
#include <vector>

namespace entry {

/// Writes planes from `position` on, which moves behind the last one.
template <typename V>
struct column_planes {
  V*& position;

  template <typename T, typename F>
  void filtered(const T& nodes, const std::vector<F>& values) {
    const auto value_in = [](const F& plane) {
      return [of_node = plane.buffer()](unsigned number) { return static_cast<V>(of_node[number]); };
    };
    std::vector<decltype(value_in(values[0]))> functions;
    functions.reserve(values.size());
    for (const F& plane : values) functions.push_back(value_in(plane));
    write_planes(nodes.table().number, functions, position);
    position += values.size() * nodes.table().number.domain().nsites();
  }

  template <typename I>
  void input(const I& image) {
    qel_image2mxPtr(image, position);
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
/// \param rule      an unknown one ends the call before the first plane, not earlier.
/// \throws std::bad_alloc.
template <typename I, typename V, typename A, typename N, typename L>
void _compute_attribute_profile(const qel::Image<I>& image, V*& position, const qel::Accumulator<A>& a,
                                const qel::Neighborhood<N>& neighborhood, std::vector<L> lambdas, std::string rule) {
  qel::morpho::attribute_profile(image, neighborhood, a, lambdas, entry::rule_called(rule),
                                 entry::column_planes<V>{position});
}

#endif  // ENTRY_PROFILE_HPP

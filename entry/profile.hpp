// SPDX-License-Identifier: MIT
#ifndef ENTRY_PROFILE_HPP
#define ENTRY_PROFILE_HPP

// The attribute profile: N filtered images from the min-tree, the image itself, N from the max-tree.
//
// Trees and attributes are computed once for each direction; a threshold costs a walk over the nodes and one over the
// pixels.

#include "entry/array_bridge.hpp"
#include "entry/rule.hpp"

#include <qel/accu/accumulator.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/image2d.hpp>
#include <qel/core/p_array.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/tree/compute_attribute_image.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <string>
#include <vector>

namespace entry {
namespace internal {

/// One filtered plane: the image of the tree without the nodes that the rule removes because their attribute does not
/// reach the threshold `lambda`.
///
/// A rule reads and changes values of nodes only, and every other pixel has the value of its node. So the rule runs on
/// the nodes alone, and the pixels look their node's value up on the way into the output.
template <typename T, typename R, typename L, typename V>
void filter_pass(const qel::morpho::tree::node_tree<T>& nodes, const qel::image2d<R>& attribute_image, L lambda,
                 const std::string& rule, V*& position) {
  const auto reaches_lambda = qel::pw::value_<qel::image2d<R>>(attribute_image) >= qel::pw::cst_<L>(lambda);
  auto values = qel::duplicate(nodes.f());
  apply_rule(rule, nodes, values, reaches_lambda);
  write_plane_by_number(nodes.table().number, values.buffer(), position);
  position += nodes.table().number.domain().nsites();
}

/// The planes of one tree, one for each threshold in the order given. `sites` tells which tree: sorted in decreasing
/// order a min-tree, in increasing order a max-tree.
template <typename I, typename S, typename A, typename N, typename L, typename V>
void write_filtered_planes(const I& input, const S& sites, const A& a, const N& neighborhood,
                           const std::vector<L>& lambdas, const std::string& rule, V*& position) {
  using tree_type = qel::morpho::tree::data<I, S>;
  const tree_type tree(input, sites, neighborhood);
  const qel::morpho::tree::node_tree<tree_type> nodes(tree);
  const auto attribute_image = qel::morpho::tree::compute_attribute_image(a, nodes);
  for (const L lambda : lambdas) filter_pass(nodes, attribute_image, lambda, rule, position);
}

}  // namespace internal
}  // namespace entry

/// Writes the profile of an image of S pixels, N thresholds: 2N + 1 planes of S elements, each column-major.
///
/// Planes 0 to N-1 come from the min-tree with the thresholds in reverse order, plane N is the image, and
/// planes N+1 to 2N come from the max-tree with the thresholds in the given order, increasing or not.
///
/// \param position  start of the output; stands behind the last plane on return.
/// \param a         the attribute in its initial state, not changed.
/// \param lambdas   thresholds, in the unit of the attribute. A node whose attribute equals one stays; with a
///                  NaN every node fails.
/// \param rule      judged in the passes only: a call with an unknown rule ends before the first plane.
/// \throws std::bad_alloc.
template <typename I, typename V, typename A, typename N, typename L>
void _compute_attribute_profile(const qel::Image<I>& image, V*& position, const qel::Accumulator<A>& a,
                                const qel::Neighborhood<N>& neighborhood, std::vector<L> lambdas, std::string rule) {
  const I& input = qel::internal::force_exact<I>(image);
  const N& nbh = qel::internal::force_exact<N>(neighborhood);
  const std::vector<L> reversed(lambdas.rbegin(), lambdas.rend());

  auto sites = qel::data::sort_psites_decreasing(input);
  entry::internal::write_filtered_planes(input, sites, a, nbh, reversed, rule, position);

  const auto middle = qel::duplicate(input);
  qel_image2mxPtr(middle, position);
  position += middle.domain().nsites();

  sites = qel::data::sort_psites_increasing(input);
  entry::internal::write_filtered_planes(input, sites, a, nbh, lambdas, rule, position);
}

#endif  // ENTRY_PROFILE_HPP

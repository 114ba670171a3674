// SPDX-License-Identifier: MIT
#ifndef ENTRY_PROFILE_HPP
#define ENTRY_PROFILE_HPP

// The attribute profile: N filtered images from the min-tree, the image itself, N from the max-tree.
//
// Trees and attributes are computed once for each direction; a threshold costs a copy of the image, a walk
// over the nodes and a walk over the pixels.

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
#include <qel/morpho/tree/propagate_representative.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <string>
#include <vector>

namespace entry {
namespace internal {

/// Writes `image` as the next plane of the output and moves `position` behind it.
template <typename I, typename V>
void write_plane(const I& image, V*& position) {
  qel_image2mxPtr(image, position);
  position += image.domain().nsites();
}

/// One filtered plane: the image of `tree` without the nodes that the rule removes because their attribute
/// does not reach the threshold `lambda`.
template <typename T, typename R, typename L, typename V>
void filter_pass(const T& tree, const qel::image2d<R>& attribute_image, L lambda, const std::string& rule,
                 V*& position) {
  const auto reaches_lambda = qel::pw::value_<qel::image2d<R>>(attribute_image) >= qel::pw::cst_<L>(lambda);
  auto filtered = qel::duplicate(tree.f());
  apply_rule(rule, tree, filtered, reaches_lambda);
  qel::morpho::tree::propagate_representative(tree, filtered);
  write_plane(filtered, position);
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
                                const qel::Neighborhood<N>& neighborhood, std::vector<L> lambdas,
                                std::string rule) {
  using tree_type = qel::morpho::tree::data<I, qel::p_array<qel::point2d>>;
  const I& input = qel::internal::force_exact<I>(image);
  const N& nbh = qel::internal::force_exact<N>(neighborhood);
  const auto count = static_cast<unsigned>(lambdas.size());

  auto sites = qel::data::sort_psites_decreasing(input);
  const tree_type min_tree(input, sites, nbh);
  auto attribute_image = qel::morpho::tree::compute_attribute_image(a, min_tree);
  for (unsigned i = count; i > 0; --i)
    entry::internal::filter_pass(min_tree, attribute_image, lambdas.at(i - 1), rule, position);

  const auto middle = qel::duplicate(input);
  entry::internal::write_plane(middle, position);

  // The min-tree refers to `sites` too; from here on it is not read again.
  sites = qel::data::sort_psites_increasing(input);
  const tree_type max_tree(input, sites, nbh);
  attribute_image = qel::morpho::tree::compute_attribute_image(a, max_tree);
  for (unsigned i = 0; i < count; ++i)
    entry::internal::filter_pass(max_tree, attribute_image, lambdas.at(i), rule, position);
}

#endif  // ENTRY_PROFILE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_PROFILE_HPP
#define QEL_MORPHO_ATTRIBUTE_PROFILE_HPP

// The attribute profile of an image: N filtered images from the min-tree, the image itself, N from the max-tree. The
// plain form is the definition, `oracle::slow_profile` of the tests. `profile_oracle.small_images_agree_in_every_plane`
// (through the module) and `attribute_profile.needs_no_host_and_is_the_same_in_every_sink` hold this one equal.
//
// A direction takes one tree and one attribute image. A walk over the nodes serves eight thresholds, one over the
// pixels several planes. The trees are made one after the other, because a tree is most of the memory.
//
// The planes go to a sink: `plane_images` or `raster_planes` of profile_planes.hpp, or your own with two operations,
// called in the order of the planes:
//
//     sink.filtered(nodes, values)   // some planes of a tree: see tree/filter/batch/filter_planes.hpp
//     sink.input(image)              // the plane in the middle: a copy, which the sink may keep
//
// To judge nodes by more than one attribute, take the steps of `profile_of_tree` with your own predicates.

#include <qel/accu/accumulator.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/filter/batch/filter_planes.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/sweep/sweep_sites.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <type_traits>
#include <vector>

namespace qel {

namespace morpho {

/// Gives `sink` the planes of the tree that `sites` sweep, one for each threshold in the order given: half of a profile.
///
/// \throws std::bad_alloc and what rule and sink throw.
template <typename I, typename N, typename A, typename L, typename Rule, typename Sink>
void profile_of_tree(const I& input, const tree::sweep_sites<I>& sites, const N& nbh, const A& a,
                     const std::vector<L>& thresholds, const Rule& rule, Sink& sink) {
  using tree_type = tree::data<I, tree::sweep_sites<I>>;
  const tree_type tree(input, sites, nbh);
  const tree::node_tree<tree_type> nodes(tree);
  const auto attribute = tree::compute_attribute_image(a, nodes);
  std::vector<decltype(pw::value_(attribute) >= pw::cst_(L()))> reaches;
  reaches.reserve(thresholds.size());
  for (const L threshold : thresholds) reaches.push_back(pw::value_(attribute) >= pw::cst_(threshold));
  tree::filter_planes(nodes, reaches, rule, sink);
}

/// Gives `sink` the profile of an image by N thresholds: 2N + 1 planes.
///
/// Planes 0 to N-1 come from the min-tree with the thresholds in reverse order, plane N is the image, and planes N+1 to
/// 2N come from the max-tree with the thresholds in the given order. They need not increase.
///
/// \param image      any integer image in one block of memory, as `image2d` is; it is not changed.
/// \param nbh        which pixels are connected: `c4()`, `c8()`, or another.
/// \param a          the attribute in its initial state; it is not changed.
/// \param thresholds in the unit of the attribute. A node whose attribute equals one stays; under a NaN all nodes fail.
/// \param rule       decides by the thresholds which nodes stay, such as `tree::filter::rule::min()`.
/// \param sink       where the planes go; may be a temporary.
/// \pre    the domain has sites, and its last row is not 32767 (see `box_fwd_piter_`).
/// \throws std::bad_alloc and what rule and sink throw.
template <typename I, typename N, typename A, typename L, typename Rule, typename Sink>
void attribute_profile(const Image<I>& image, const Neighborhood<N>& nbh, const Accumulator<A>& a,
                       const std::vector<L>& thresholds, const Rule& rule, Sink&& sink) {
  static_assert(std::is_same_v<typename trait::image_<I>::value_storage, trait::image::value_storage::one_block>,
                "attribute_profile: copy the image into an image2d first, as make_image does");
  const I& input = qel::internal::force_exact<I>(image);
  const N& exact_nbh = qel::internal::force_exact<N>(nbh);
  const A& exact_a = qel::internal::force_exact<A>(a);
  const std::vector<L> reversed(thresholds.rbegin(), thresholds.rend());

  tree::sweep_sites<I> sites(input, false);
  profile_of_tree(input, sites, exact_nbh, exact_a, reversed, rule, sink);
  sink.input(duplicate(input));
  sites.turn();
  profile_of_tree(input, sites, exact_nbh, exact_a, thresholds, rule, sink);
}

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_PROFILE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_COMPUTE_PARENT_HPP
#define QEL_MORPHO_TREE_COMPUTE_PARENT_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/morpho/tree/compute_node_table.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// The parent image of the component tree of `f` under `nbh`; `s` gives the sweep order.
///
/// A site that is not canonical points to the canonical site of its node, a canonical site to that of the parent
/// node, and the root, the first site of `s`, to itself.
///
/// Cost: that of `compute_node_table`, and one pass after a flood.
///
/// \pre    `s` holds every site of the domain of `f` once, in an order of `data::sort_psites_increasing` (max-tree)
///         or `data::sort_psites_decreasing` (min-tree); or it is empty, and nothing is set.
/// \post   the border is not set.
/// \throws std::bad_alloc
template <typename I, typename N, typename S>
typename trait::ch_value<I, typename I::psite>::ret compute_parent(const Image<I>& f, const Neighborhood<N>& nbh,
                                                                   const Site_Set<S>& s) {
  using parent_image = typename trait::ch_value<I, typename I::psite>::ret;
  const I& exact_f = qel::internal::force_exact<I>(f);
  return internal::flood_or_union_find(
      exact_f, qel::internal::force_exact<N>(nbh), qel::internal::force_exact<S>(s),
      [&](const auto& table) { return internal::parent_image_of(exact_f, table); },
      [](parent_image parents) { return parents; });
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_COMPUTE_PARENT_HPP

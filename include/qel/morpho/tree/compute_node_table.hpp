// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_COMPUTE_NODE_TABLE_HPP
#define QEL_MORPHO_TREE_COMPUTE_NODE_TABLE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/morpho/tree/flood/flooded_node_table.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>
#include <qel/morpho/tree/union_find/compute_parent_generic.hpp>
#include <qel/trace/trace.hpp>

#include <type_traits>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether images of type I can ever be flooded under a neighbourhood of type N: the image lies in one block, and the
/// neighbourhood is made of a window.
template <typename I, typename N>
inline constexpr bool has_flood = false;
template <typename I, typename W>
inline constexpr bool has_flood<I, neighb<W>> =
    std::is_same_v<typename trait::image_<I>::value_storage, trait::image::value_storage::one_block>;

/// `from_table(table)` after a flood, `from_parents(parent image)` after union-find. Union-find takes what a flood
/// can't: no sites, and windows that reach beyond the border, are one-sided or lack a direct neighbour.
template <typename I, typename N, typename S, typename FromTable, typename FromParents>
auto flood_or_union_find(const I& f, const N& nbh, const S& s, FromTable from_table, FromParents from_parents) {
  trace::entering("morpho::tree::compute_parent");
  internal::compute_parent_tests(f, nbh, s);
  const auto found = [&] {
    if constexpr (has_flood<I, N>)
      if (s.nsites() != 0 && can_be_flooded(f, nbh)) return from_table(flooded_node_table(f, nbh, s));
    return from_parents(impl::generic::compute_parent(f, nbh, s));
  };
  auto result = found();
  trace::exiting("morpho::tree::compute_parent");
  return result;
}

}  // namespace internal

/// The nodes of the component tree of `f` under `nbh`; `s` gives the sweep order. Without sites there are no nodes.
///
/// Cost: a flood is linear but for the search of the next level, in 64-ary bits, and with levels of 32 bits for heaps
/// of the sites that wait; union-find takes up to n log n steps. Memory of a flood: 4 bytes a site and 12 a node, and
/// while it runs 5 bytes more a site for values of 8 bits, 6 for levels of 16 bits, 12 for those of 32, and 16 for each
/// component that it has left for one inside. For a photograph of 8 bits these are 11 in all, of 16 bits 16; for an
/// `int` image of all different values 28, for a ramp along a serpentine 37. Ranks need the sorted sites as well.
///
/// \pre    `s` holds every site of the domain of `f` once, sorted by value, ties by position; or it is empty.
/// \throws std::bad_alloc
template <typename I, typename N, typename S>
node_table<I> compute_node_table(const Image<I>& f, const Neighborhood<N>& nbh, const Site_Set<S>& s) {
  const I& exact_f = qel::internal::force_exact<I>(f);
  const S& exact_s = qel::internal::force_exact<S>(s);
  return internal::flood_or_union_find(
      exact_f, qel::internal::force_exact<N>(nbh), exact_s, [](node_table<I> table) { return table; },
      [&](const auto& parents) { return internal::node_table_of(exact_f, exact_s, parents); });
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_COMPUTE_NODE_TABLE_HPP

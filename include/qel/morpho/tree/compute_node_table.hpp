// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_COMPUTE_NODE_TABLE_HPP
#define QEL_MORPHO_TREE_COMPUTE_NODE_TABLE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/morpho/tree/compute_parent_generic.hpp>
#include <qel/morpho/tree/flooded_node_table.hpp>
#include <qel/morpho/tree/node_table.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Any image and neighbourhood: union-find.
template <typename Storage, typename I, typename N, typename S>
node_table<I> compute_node_table_(Storage, const I& f, const N& nbh, const S& s) {
  return node_table_of(f, s, impl::generic::compute_parent(f, nbh, s));
}

/// An image in one block can be flooded under a neighbourhood made of a window, unless the window reaches beyond the
/// image's border, is one-sided or lacks a direct neighbour.
template <typename I, typename W, typename S>
node_table<I> compute_node_table_(trait::image::value_storage::one_block, const I& f, const neighb<W>& nbh,
                                  const S& s) {
  if (can_be_flooded(f, nbh)) return flooded_node_table(f, nbh, s);
  return node_table_of(f, s, impl::generic::compute_parent(f, nbh, s));
}

}  // namespace internal

/// The nodes of the component tree of `f` under `nbh`; `s` tells the sweep order.
///
/// Cost: linear but for the search of the next level, by 64-ary bits; 10 to 12 bytes a site while it runs.
///
/// \pre    `s` holds every site of the domain of `f` once, sorted by value, ties by position.
/// \throws std::bad_alloc
template <typename I, typename N, typename S>
node_table<I> compute_node_table(const Image<I>& f, const Neighborhood<N>& nbh, const Site_Set<S>& s) {
  trace::entering("morpho::tree::compute_parent");
  internal::compute_parent_tests(f, nbh, s);
  auto table =
      internal::compute_node_table_(typename trait::image_<I>::value_storage(), qel::internal::force_exact<I>(f),
                                    qel::internal::force_exact<N>(nbh), qel::internal::force_exact<S>(s));
  trace::exiting("morpho::tree::compute_parent");
  return table;
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_COMPUTE_NODE_TABLE_HPP

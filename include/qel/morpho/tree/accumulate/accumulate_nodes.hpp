// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_NODES_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_NODES_HPP

// Attributes with an accumulator for each node instead of one for each site: two ways, by the order that counts.

#include <qel/accu/trait_accumulator.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/morpho/tree/accumulate/take_as_init.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Gives every node its own sites in raster order, then hands on from node to parent. Equals the definition, because
/// the order does not show in the result.
template <typename A, typename T, typename D>
void accumulate_nodes(trait::accumulator::order::free, const A& a, const node_tree<T>& tree, D& data) {
  const auto& f = tree.whole().f();
  const auto& number = tree.table().number;
  for (unsigned k = 0; k < tree.nnodes(); ++k) data.element(k).init();
  box_fwd_piter_<typename T::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) take_site(data.element(number(p)), a, f, p);
  up_node_piter<node_tree<T>> n(tree);
  for (n.start(); n.is_valid(); n.next())
    if (!tree.is_root(n)) data(tree.parent(n)).take(data(n));
}

/// Hands on from site to parent in the order of the definition. A site that is not canonical holds nothing but itself
/// at its turn, so only nodes need an accumulator.
template <typename A, typename T, typename D>
void accumulate_nodes(trait::accumulator::order::fixed, const A& a, const node_tree<T>& tree, D& data) {
  const auto& f = tree.whole().f();
  const auto& s = stored_sites(tree.whole().domain());
  const auto& table = tree.table();
  for (unsigned k = 0; k < tree.nnodes(); ++k) take_as_init(data.element(k), f, table.canonical[k]);

  // The walk jumps about in the image: fetch ahead.
  constexpr unsigned far = 32;
  constexpr unsigned near = 12;
  for (unsigned i = s.nsites(); i-- > 0;) {
    if (i >= far) __builtin_prefetch(&table.number(s[i - far]));
    if (i >= near) {
      const unsigned k = table.number(s[i - near]);
      __builtin_prefetch(&data.element(k));
      __builtin_prefetch(&table.canonical[k]);
      __builtin_prefetch(&table.parent[k]);
    }
    const auto& p = s[i];
    const unsigned k = table.number(p);
    if (table.canonical[k] != p) {
      take_site(data.element(k), a, f, p);
    } else if (const point2d n = node_sheet::site(k); !tree.is_root(n)) {
      data(tree.parent(n)).take(data(n));
    }
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_NODES_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_NODES_NODE_TABLE_HPP
#define QEL_MORPHO_TREE_NODES_NODE_TABLE_HPP

// Nodes by number. The plain form of a tree is an image that has at each site its parent. The fast form is a table with
// an entry for each node: walks over nodes read it nearly in sequence. The test
// `node_table.is_that_of_union_find_for_every_sweep_and_neighbourhood` holds the two equal.

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/check_init.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>

#include <vector>

namespace qel {

namespace morpho {

namespace tree {

/// A component tree of an image of type I, its nodes numbered from 0.
///
/// After a flood, neighbours in the image mostly have numbers near each other. Where an algorithm runs on trees and
/// images, a node is a site of the `internal::node_sheet`.
template <typename I>
struct node_table {
  /// A site of the image.
  using site = typename I::site;

  /// Number of nodes: from 1, of a flat image, to one for each site; 0 for no sites.
  unsigned nnodes() const { return qel::internal::narrowed<unsigned>(canonical.size()); }

  typename trait::ch_value<I, unsigned>::ret number;  ///< the node of each site; the border means nothing
  std::vector<site> canonical;                        ///< the canonical site of each node
  std::vector<point2d> parent;                        ///< the parent of each node; the root is its own
  p_array2d upward;                                   ///< all nodes, each before its parent, the root last
};

namespace internal {

/// The parent of the site `p`: the canonical site of its node; if `p` is canonical, that of the parent node.
template <typename I>
const typename I::psite& parent_in(const node_table<I>& table, const typename I::psite& p) {
  const unsigned k = table.number(p);
  return table.canonical[table.canonical[k] == p ? node_sheet::number(table.parent[k]) : k];
}

/// The parent image that `table` stands for.
template <typename I>
typename trait::ch_value<I, typename I::psite>::ret parent_image_of(const I& f, const node_table<I>& table) {
  using parent_image = typename trait::ch_value<I, typename I::psite>::ret;
  parent_image parent;
  qel::internal::check_init(&parent_image::init_);
  parent.init_(f.domain(), f.border());
  typename I::domain_t::fwd_piter p(f.domain());
  for (p.start(); p.is_valid(); p.next()) parent(p) = parent_in(table, p);
  return parent;
}

/// The table of a parent image. \pre `parent` is canonical, and `s` its sweep order.
template <typename I, typename S, typename P>
node_table<I> node_table_of(const I& f, const S& s, const P& parent) {
  node_table<I> table;
  table.number.init_(f.domain(), f.border());
  const unsigned n = s.nsites();
  for (unsigned i = 0; i < n; ++i) {
    const auto& p = s[i];
    const auto& q = parent(p);
    const bool is_root = q == p;
    if (!is_root && f(q) == f(p)) {
      table.number(p) = table.number(q);
      continue;
    }
    const unsigned k = table.nnodes();
    table.number(p) = k;
    table.canonical.push_back(p);
    table.parent.push_back(node_sheet::site(is_root ? k : table.number(q)));
  }
  for (unsigned k = table.nnodes(); k > 0; --k) table.upward.insert(node_sheet::site(k - 1));
  return table;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_NODES_NODE_TABLE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_HPP

// Attributes into nodes: each node gets an accumulator of all its sites and those of its descendants. In the plain form
// each site starts with itself and hands its content to its parent, in the reverse of the sweep order, for any tree.
// The order shows in the bits, because `float` sums round. On a `node_tree` the fast forms, `accumulate_nodes`
// and `accumulate_by_nodes`, give the same bits:
// `component_tree.nodes_alone_have_the_attributes_of_the_whole_tree` holds them equal.

#include <qel/accu/trait_accumulator.hpp>
#include <qel/morpho/tree/accumulate/accumulate_nodes.hpp>
#include <qel/morpho/tree/accumulate/take_as_init.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/piter.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Gives every site of `data`, which all hold a copy of `a`, the accumulator of its node.
template <typename A, typename T, typename D>
void accumulate(const A&, const T& tree, D& data) {
  up_site_piter<T> p(tree);
  for (p.start(); p.is_valid(); p.next()) take_as_init(data(p), tree.f(), p);
  for (p.start(); p.is_valid(); p.next())
    if (!tree.is_root(p)) data(tree.parent(p)).take(data(p));
  for (p.start(); p.is_valid(); p.next())
    if (!tree.is_a_node(p)) data(p) = data(tree.parent(p));
}

template <typename A, typename T, typename D>
void accumulate(const A& a, const node_tree<T>& tree, D& data) {
  if (tree.nnodes() == 0) return;  // then no site has a number
  accumulate_nodes(typename trait::accumulator_<A>::order(), a, tree, data);
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_BY_NODES_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_BY_NODES_HPP

// Accumulators whose order counts, without the sorted sites.
//
// On the walk of the definition a node takes, in this order: its canonical site; its children, those of values farther
// from its own first, equal ones in the order of their canonical sites; its other sites. This holds because the values
// of children lie on one side of its own. So nodes can be done one by one, in any order with children before parents.
// Here it is that of `nodes()`: after a flood, what belongs together is close together in memory.

#include <qel/accu/trait_accumulator.hpp>
#include <qel/core/image2d.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/morpho/tree/accumulate/own_sites.hpp>
#include <qel/morpho/tree/accumulate/take_as_init.hpp>
#include <qel/morpho/tree/accumulate/waiting_nodes.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <algorithm>
#include <type_traits>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Makes `of_node` hold the first site of node number `k`, the canonical one.
template <typename A, typename T>
void take_first_site(A& of_node, const node_tree<T>& tree, const own_sites<T>&, unsigned k) {
  take_as_init(of_node, tree.whole().f(), tree.table().canonical[k]);
}

/// The same where only its value counts, if that.
template <typename A, typename T>
void take_first_site(A& of_node, const node_tree<T>& tree, const own_site_counts<T>&, unsigned k) {
  take_as_init(of_node, tree.f(), node_sheet::site(k));
}

/// `of_node` with the sites of node number `k` but the canonical one, each from a copy of `a`, which may have settings.
/// It comes and goes by value, and this is a function of its own: so the sums stay in registers.
template <typename A, typename T>
[[gnu::noinline]] A with_own_sites(A of_node, const A& a, const node_tree<T>& tree, const own_sites<T>& own, unsigned k,
                                   bool raster_ties) {
  own.for_each_other(k, raster_ties, [&](const typename T::site& p) { take_site(of_node, a, tree.whole().f(), p); });
  return of_node;
}

/// The same where only the number of the sites or their values count: a node has one value.
template <typename A, typename T>
A with_own_sites(A of_node, const A& a, const node_tree<T>& tree, const own_site_counts<T>& own, unsigned k, bool) {
  A one = a;
  take_first_site(one, tree, own, k);
  for (unsigned n = own.count(k); n > 1; --n) of_node.take(one);
  return of_node;
}

/// Whether `accumulate_by_nodes` is for accumulators of type A on a tree of type T: nothing else needs the sorted sites
/// of integers of 32 bits or less, and the keys of waiting nodes hold their values. A user's own image may have rows
/// that are not in one block.
template <typename A, typename T>
inline constexpr bool goes_by_nodes = false;
template <typename A, typename T>
inline constexpr bool goes_by_nodes<A, node_tree<T>> =
    std::is_same_v<typename trait::accumulator_<A>::order, trait::accumulator::order::fixed>&&
        fits_order_key<typename T::value>&&
            std::is_same_v<typename trait::ch_value<typename T::function, unsigned>::ret, image2d<unsigned>>;

/// Calls `give(number, accumulator)` for the nodes, children before parents. False if it stops before the end: nodes
/// are not listed each right after those below it, or more than one for 8 sites wait for their parents. In noise of
/// two values one for 15 waits; on a checkerboard, where half of the sites wait, to sort the children takes twice as
/// long as to sort the sites.
///
/// Cost: two passes over the sites, one for values alone; one over the nodes, which sorts the children of each. Memory:
/// 4 bytes a site, none for values alone; 4 bytes a node; 12 and an accumulator for each node that waits, with address
/// space for as many as may wait; 8 bytes for each child of the node with the most.
///
/// \pre    there are nodes. Values are integers: those that are equal have the same bits.
/// \throws std::bad_alloc
template <typename A, typename T, typename Give>
bool accumulate_by_nodes(const A& a, const node_tree<T>& tree, Give give) {
  using takes_sites = std::is_same<typename trait::accumulator_<A>::when_pix, trait::accumulator::when_pix::use_p>;
  const std::conditional_t<takes_sites::value, own_sites<T>, own_site_counts<T>> own(tree);
  const auto& f = tree.whole().f();
  const auto& table = tree.table();
  const sweep_order order = order_of(f, tree.whole().domain());
  const unsigned most = std::max(tree.whole().domain().nsites() / 8, 1024u);
  waiting_nodes<A> waiting(most);
  for (const auto& n : tree.nodes().vect_) {
    const unsigned k = node_sheet::number(n);
    A of_node = a;
    take_first_site(of_node, tree, own, k);
    waiting.leave(k, [&](const A& child) { of_node.take(child); });
    if (own.count(k) > 1) of_node = with_own_sites(of_node, a, tree, own, k, order.raster_ties);
    give(k, of_node);
    if (waiting.size() == most) return false;
    const unsigned parent = node_sheet::number(table.parent[k]);
    waiting.enter({order_key(order, tree.f().element(k), table.canonical[k]), parent, of_node});
  }
  return waiting.size() == 1;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_BY_NODES_HPP

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
#include <qel/morpho/tree/accumulate/node_children.hpp>
#include <qel/morpho/tree/accumulate/own_sites.hpp>
#include <qel/morpho/tree/accumulate/take_as_init.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <type_traits>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The accumulator of a node takes its sites but the canonical one, each from a copy of `a`, which may have settings.
template <typename A, typename T>
void take_own_sites(A& of_node, const A& a, const node_tree<T>& tree, const own_sites<T>& own, unsigned k,
                    bool raster_ties) {
  const auto& f = tree.whole().f();
  // The canonical site comes first in the array, and the walk goes backwards.
  const auto *first = own.begin(k), *last = own.end(k) - 1;
  if (raster_ties)
    for (; last != first; --last) take_site(of_node, a, f, *last);
  else
    for (; first != last; ++first) take_site(of_node, a, f, *first);
}

/// The same where only the number of the sites or their values count: a node has one value.
template <typename A, typename T>
void take_own_sites(A& of_node, const A& a, const node_tree<T>& tree, const own_site_counts<T>& own, unsigned k, bool) {
  A one = a;
  take_as_init(one, tree.whole().f(), tree.table().canonical[k]);
  for (unsigned n = own.count(k); n > 1; --n) of_node.take(one);
}

/// Gives every node of `data`, whose elements all hold a copy of `a`, its accumulator.
///
/// Cost: two passes over the sites, one for values alone; one over the nodes, which sorts the children of each. Memory:
/// 4 bytes a site, none for values alone; 12 bytes a node, and up to 48 for each child of the widest one.
///
/// \pre    there are nodes. Values are integers: those that are equal have the same bits.
/// \throws std::bad_alloc
template <typename A, typename T, typename D>
void accumulate_by_nodes(const A& a, const node_tree<T>& tree, D& data) {
  using takes_sites = std::is_same<typename trait::accumulator_<A>::when_pix, trait::accumulator::when_pix::use_p>;
  const std::conditional_t<takes_sites::value, own_sites<T>, own_site_counts<T>> own(tree);
  const auto& f = tree.whole().f();
  const auto& canonical = tree.table().canonical;
  const sweep_order order = order_of(f, tree.whole().domain());
  node_children<T> children(tree, order);
  for (const auto& n : tree.nodes().vect_) {
    const unsigned k = node_sheet::number(n);
    A of_node = data.element(k);
    take_as_init(of_node, f, canonical[k]);
    children.for_each(k, [&](unsigned child) { of_node.take(data.element(child)); });
    take_own_sites(of_node, a, tree, own, k, order.raster_ties);
    data.element(k) = of_node;
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_ACCUMULATE_BY_NODES_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_FILTER_PLANES_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_FILTER_PLANES_HPP

// Many filterings of one tree.
//
// A rule reads and changes values of nodes only, and every pixel has the value of its node. So the rule runs on
// the node values alone, and the pixels look their node's value up on the way out. The numbers of the nodes are much
// larger than the values: they are read once for several planes.

#include <qel/morpho/tree/filter/batch/filter_each.hpp>
#include <qel/morpho/tree/node_tree.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// How many planes go out together: as many as have node values of 8 bytes a pixel or less together, which is what the
/// flood had for levels and queues and has given back; but 16 at most, for more save no time worth their memory.
template <typename T>
std::size_t planes_at_once(const node_tree<T>& nodes) {
  const std::size_t budget = std::size_t{8} * nodes.table().number.domain().nsites();
  const std::size_t plane = sizeof(typename node_tree<T>::value) * std::size_t{nodes.nnodes()};
  return std::clamp<std::size_t>(budget / std::max<std::size_t>(plane, 1), 1, 16);
}

}  // namespace internal

/// Filters the nodes once for each predicate, and gives the results to `sink` in this order.
///
/// `sink.filtered(nodes, values)` is called for each group of results. `values` is a vector of images on the sheet of
/// the nodes, one for each plane: the plane has at the pixel p the value `values[k].element(number(p))`, where `number`
/// is `nodes.table().number`. `spread_node_values` writes it out. The sink may keep the images.
///
/// Cost: one walk over the nodes for each predicate, or for some at a time if the rule can do so; memory for the node
/// values of as many planes as go out together.
///
/// \param nodes      of a min-tree or a max-tree.
/// \param predicates the nodes that are to stay, as functions of sites of the sheet: `pw::value_(attribute) >=
///                   pw::cst_(threshold)`, or whatever the rules take.
/// \param rule       called as `rule(nodes, values, predicate)`: an object of `filter::rule`, or one of your own. What more
///                   it may offer, see `filter_each`.
/// \throws std::bad_alloc, and what rule and sink throw.
template <typename T, typename P, typename Rule, typename Sink>
void filter_planes(const node_tree<T>& nodes, const std::vector<P>& predicates, const Rule& rule, Sink&& sink) {
  const std::size_t most = internal::planes_at_once(nodes);
  for (std::size_t k = 0; k < predicates.size(); k += most) {
    const P* const first = predicates.data() + k;
    auto values = filter_each(nodes, first, first + std::min(most, predicates.size() - k), rule);
    sink.filtered(nodes, values);
  }
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_FILTER_PLANES_HPP

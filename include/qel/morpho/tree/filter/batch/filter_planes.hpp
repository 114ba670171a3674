// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_FILTER_PLANES_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_FILTER_PLANES_HPP

// Many filterings of one tree. In the plain form a rule runs on the image, once for each predicate. Every pixel has the
// value of its node, so here it runs on the node values, for up to eight predicates at once (`batch`). Pixels look
// their values up on the way out, once for all these planes (`plane_values`).
// The tests `filter_batch.equals_single_calls` and `filter_batch.equals_single_calls_on_a_sheet_of_many_rows` hold many
// predicates at once equal to one after the other.

#include <qel/morpho/tree/filter/batch/filter_each.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/trace/trace.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// How many planes go out together: as many as have 8 bytes of node values a pixel. With 4 a call on 2048 x 2048 `int32`
/// pixels takes 7 % more time. An outline shows one after the other, whatever the image.
template <typename T>
std::size_t planes_at_once(const node_tree<T>& nodes) {
  if (!trace::quiet) return 1;
  const std::size_t budget = std::size_t{8} * nodes.table().number.domain().nsites();
  const std::size_t plane = sizeof(typename node_tree<T>::value) * std::size_t{nodes.nnodes()};
  return std::clamp<std::size_t>(budget / std::max<std::size_t>(plane, 1), 1, most_planes);
}

}  // namespace internal

/// Filters the nodes once for each predicate, and gives the results to `sink` in this order.
///
/// `sink.filtered(nodes, values)` takes some results at a time. `values` are `plane_values` of so many planes: the value
/// of the pixel p in plane k is `values.of(nodes.table().number(p))[k]`, and `values.spread` writes them out.
///
/// Cost: one walk over the nodes for each predicate, or for eight if the rule has a `batch`; memory for the node values
/// of the planes that go out together.
///
/// \param nodes      of a min-tree or a max-tree.
/// \param predicates true for the sites of the sheet whose nodes stay, such as `pw::value_(attribute) >=
///                   pw::cst_(threshold)`, or any callable.
/// \param rule       called as `rule(nodes, values, predicate)`: an object of `filter::rule`, or one of your own. See
///                   `filter_each` for `batch`.
/// \throws std::bad_alloc and what rule and sink throw.
template <typename T, typename P, typename Rule, typename Sink>
void filter_planes(const node_tree<T>& nodes, const std::vector<P>& predicates, const Rule& rule, Sink&& sink) {
  const std::size_t most = internal::planes_at_once(nodes);
  for (std::size_t k = 0; k < predicates.size(); k += most) {
    const P* const first = predicates.data() + k;
    const auto values = filter_each(nodes, first, first + std::min(most, predicates.size() - k), rule);
    sink.filtered(nodes, values);
  }
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_FILTER_PLANES_HPP

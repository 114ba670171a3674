// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SPREAD_NODE_VALUES_HPP
#define QEL_MORPHO_TREE_SPREAD_NODE_VALUES_HPP

#include <qel/core/trait_image.hpp>
#include <qel/data/check_init.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// Writes the value of each pixel's node from `destination` on, in raster order and without gaps.
///
/// Cost: one pass over the pixels.
///
/// \param table  the nodes of an image, `tree.table()` of a tree or of its `node_tree`.
/// \param values an image on the sheet of nodes: filtered values, or an attribute.
/// \pre   there is room for one element for each pixel.
template <typename I, typename J, typename V>
void spread_node_values(const node_table<I>& table, const J& values, V* destination) {
  typename I::domain_t::fwd_piter p(table.number.domain());
  for (p.start(); p.is_valid(); p.next()) *destination++ = static_cast<V>(values.element(table.number(p)));
}

/// The image that has at each pixel the value of its node: domain and border are those of the tree's image.
///
/// Cost: one pass over the pixels.
///
/// \param table  the nodes of an image, `tree.table()` of a tree or of its `node_tree`.
/// \param values an image on the sheet of nodes: filtered values, or an attribute.
/// \post  the border of the result is not set.
/// \throws std::bad_alloc
template <typename I, typename J>
typename trait::ch_value<I, typename J::value>::ret spread_node_values(const node_table<I>& table, const J& values) {
  using output_t = typename trait::ch_value<I, typename J::value>::ret;
  qel::internal::check_init(&output_t::init_);
  output_t output;
  output.init_(table.number.domain(), table.number.border());
  typename I::domain_t::fwd_piter p(table.number.domain());
  for (p.start(); p.is_valid(); p.next()) output(p) = values.element(table.number(p));
  return output;
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SPREAD_NODE_VALUES_HPP

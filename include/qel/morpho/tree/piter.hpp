// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_PITER_HPP
#define QEL_MORPHO_TREE_PITER_HPP

// The walks of a component tree, by index over one of its arrays: no parent or child link is followed. Nodes of
// different branches are interleaved; only the order between a node and its ancestors is certain.
//
// The first walk over the nodes of a `data` makes their list: see `data::nodes()`.

#include <qel/core/site_set/p_indexed_piter.hpp>
#include <qel/morpho/tree/piter_adaptor.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// Visits every site once, each before its parent, the root last; in a node, the canonical site last. A Site_Iterator.
template <typename T>
struct up_site_piter
    : qel::internal::piter_adaptor_<p_indexed_bkd_piter<typename T::sites_t>, typename T::sites_t, up_site_piter<T>> {
  /// A walk over the sites of `tree`, invalid until `start()`. \pre `tree` outlives it.
  explicit up_site_piter(const T& tree) { this->change_target(tree.domain()); }
  explicit up_site_piter(const T&&) = delete;
};

/// Visits every node once, each before its parent, the root last. A Site_Iterator.
template <typename T>
struct up_node_piter
    : qel::internal::piter_adaptor_<p_indexed_fwd_piter<typename T::nodes_t>, typename T::nodes_t, up_node_piter<T>> {
  /// A walk over the nodes of `tree`, invalid until `start()`. \pre `tree` outlives it. \throws std::bad_alloc
  explicit up_node_piter(const T& tree) { this->change_target(tree.nodes()); }
  explicit up_node_piter(const T&&) = delete;
};

/// Visits every node once, each after its parent, the root first. A Site_Iterator.
template <typename T>
struct dn_node_piter
    : qel::internal::piter_adaptor_<p_indexed_bkd_piter<typename T::nodes_t>, typename T::nodes_t, dn_node_piter<T>> {
  /// A walk over the nodes of `tree`, invalid until `start()`. \pre `tree` outlives it. \throws std::bad_alloc
  explicit dn_node_piter(const T& tree) { this->change_target(tree.nodes()); }
  explicit dn_node_piter(const T&&) = delete;
};

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_PITER_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_NODE_TREE_HPP
#define QEL_MORPHO_TREE_NODE_TREE_HPP

// A component tree without the sites that are not nodes.
//
// On the tree of an image, nodes lie scattered among the other sites. Here they lie close together: node number k is
// the site number k, in raster order, of a sheet of its own, an ordinary image domain. The rules and the attribute
// image ask a tree for image, nodes, parents and root only, so they take a node tree and an image of node values as
// well, on a fraction of the memory. What asks for children, or for sites that are no nodes, does not.

#include <qel/core/point2d.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/check_init.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// The nodes of a tree of type T, each a site of the sheet.
template <typename T>
class node_tree {
 public:
  /// An image like that of the tree, with one value for each node.
  using function = typename trait::concrete<typename T::function>::ret;
  /// A site of the sheet: a node.
  using site = point2d;
  /// The same: no node needs a lookup.
  using psite = point2d;
  /// A grey level.
  using value = typename function::value;
  /// A list of nodes.
  using nodes_t = p_array<point2d>;

  /// The nodes of `tree`. \pre `tree` outlives this object.
  ///
  /// Cost: one value for each node, read at the canonical sites all over the image. \throws std::bad_alloc
  explicit node_tree(const T& tree) : whole_(tree) {
    qel::internal::check_init(&function::init_);
    f_.init_(internal::node_sheet::domain(nnodes()), 0);
    for (unsigned k = 0; k < nnodes(); ++k) f_.element(k) = tree.f()(table().canonical[k]);
  }

  /// Not copied: it refers to the whole tree.
  node_tree(const node_tree&) = delete;
  /// Not assigned.
  node_tree& operator=(const node_tree&) = delete;

  /// The tree that the nodes come from.
  const T& whole() const { return whole_; }

  /// The table of the whole tree.
  const node_table<typename T::function>& table() const { return whole_.table(); }

  /// Number of nodes. The sheet may have some more sites.
  unsigned nnodes() const { return table().nnodes(); }

  /// The value of each node in the image.
  const function& f() const { return f_; }

  /// The nodes, each before its parent. The whole tree lists them in another order.
  const nodes_t& nodes() const { return table().upward; }

  /// The parent of the node `n`; the root for the root. \pre `n` is a node.
  const psite& parent(const psite& n) const { return table().parent[internal::node_sheet::number(n)]; }

  /// Whether the node `n` is its own parent. \pre `n` is a node.
  bool is_root(const psite& n) const { return parent(n) == n; }

 private:
  const T& whole_;
  function f_;
};

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_NODE_TREE_HPP

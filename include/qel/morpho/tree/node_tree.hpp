// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_NODE_TREE_HPP
#define QEL_MORPHO_TREE_NODE_TREE_HPP

// A component tree without the sites that are not nodes.
//
// The rules read and write nodes only. On the tree of an image, a node is its canonical site, and the nodes lie
// scattered among the other sites. Here they lie close together: node number k is the site number k, in raster order,
// of a sheet of its own, an ordinary image domain. So what asks a tree for its image, nodes, parents and root alone (the
// rules, and the attribute image, which knows both kinds) takes a node tree and an image of node values as well, and
// runs on a fraction of the memory. What asks for children or for sites that are no nodes does not.

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
  /// An image like that of the tree, here with one value for each node.
  using function = typename trait::concrete<typename T::function>::ret;
  /// A site of the sheet, which stands for a node.
  using site = point2d;
  /// The same: no node needs a lookup.
  using psite = point2d;
  /// A grey level.
  using value = typename function::value;
  /// A list of nodes.
  using nodes_t = p_array<point2d>;

  /// The nodes of `tree`, which must outlive this object.
  ///
  /// Cost: one value for each node, read at the canonical sites all over the image.
  ///
  /// \throws std::bad_alloc
  explicit node_tree(const T& tree) : whole_(tree) {
    qel::internal::check_init(&function::init_);
    f_.init_(internal::node_sheet::domain(nnodes()), 0);
    for (unsigned k = 0; k < nnodes(); ++k) f_.element(k) = tree.f()(table().canonical[k]);
  }

  /// Not copied: one object can serve all readers.
  node_tree(const node_tree&) = delete;
  /// Not assigned, for it refers to the whole tree.
  node_tree& operator=(const node_tree&) = delete;

  /// The tree that these are the nodes of.
  const T& whole() const { return whole_; }

  /// The table of the whole tree, which is this tree's too.
  const node_table<typename T::function>& table() const { return whole_.table(); }

  /// Number of nodes. The sheet may have some sites more, which are none.
  unsigned nnodes() const { return table().nnodes(); }

  /// The value of each node in the image.
  const function& f() const { return f_; }

  /// The nodes, each before its parent. The order differs from that of the whole tree's list.
  const nodes_t& nodes() const { return table().upward; }

  /// The parent of the node `n`; the root for the root. \pre `n` is a node.
  const psite& parent(const psite& n) const { return table().parent[internal::node_sheet::number(n)]; }

  /// Whether the node `n` has no parent but itself. \pre `n` is a node.
  bool is_root(const psite& n) const { return parent(n) == n; }

 private:
  const T& whole_;
  function f_;
};

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_NODE_TREE_HPP

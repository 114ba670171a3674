// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_DATA_HPP
#define QEL_MORPHO_TREE_DATA_HPP

// A tree as its users see it. The plain form is an image of parents with lists in sweep order; the fast form, a table
// of numbered nodes, answers most questions, and the rest is made when first read. The tests
// `component_tree.lists_and_walks_are_in_the_reverse_of_the_sweep_order` and
// `node_table.is_that_of_union_find_for_every_sweep_and_neighbourhood` hold the two equal.

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/site_set/p_indexed_piter.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/check_init.hpp>
#include <qel/data/geom/bbox.hpp>
#include <qel/morpho/tree/compute_node_table.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>
#include <qel/trace/trace.hpp>

#include <utility>
#include <vector>

namespace qel {

namespace morpho {

/// Component trees of images, and walks over them.
namespace tree {

/// A component tree of an image of type I, swept in the order of a site array S.
///
/// A node has no object: its canonical site names it. What belongs to a node (children, attribute, mark) lives in an
/// image at that site. Lists are in the reverse of the sweep order: each node before its parent, the root last.
///
/// The image and the site array are only referred to: keep them alive and unchanged.
///
/// `parent`, `is_root` and `is_a_node` read the node table, which the construction makes. The first read of the parent
/// image or of a list makes it and may throw std::bad_alloc. The lists walk the site array: before you assign another
/// to it, read them once. Two threads may read one tree only after all that they read has been made.
template <typename I, typename S>
class data {
 public:
  /// The type of the image, which is a function from sites to values.
  using function = I;
  /// A site of the image.
  using site = typename I::site;
  /// A site; also a node, of which it is the canonical site.
  using psite = typename I::psite;
  /// A grey level.
  using value = typename I::value;
  /// The sites in sweep order.
  using sites_t = S;
  /// A list of canonical sites.
  using nodes_t = p_array<site>;
  /// One parent for each site.
  using parent_image_t = typename trait::ch_value<I, psite>::ret;
  /// A list at each node, empty at other sites.
  using children_image_t = typename trait::ch_value<I, nodes_t>::ret;

  /// The tree of `f` under `nbh`: a max-tree if `s` is increasing, a min-tree if it is decreasing.
  ///
  /// Cost: that of `compute_node_table`.
  /// \pre    `s` holds every site of `f` once, as the sorts give them; or it is empty, and so is the tree.
  /// \throws std::bad_alloc
  template <typename N>
  data(const Image<I>& f, const Site_Set<S>& s, const Neighborhood<N>& nbh)
      : f_(qel::internal::force_exact<I>(f)),
        s_(qel::internal::force_exact<S>(s)),
        table_(compute_node_table(f, nbh, s)) {
    // An outline shows the image of children here, although its first read makes it.
    trace::entering("core::initialize");
    trace::suspend();
    geom::bbox(f_.domain());
    trace::resume();
    trace::exiting("core::initialize");
  }

  /// Not copied: the lists are large.
  data(const data&) = delete;
  /// Not assigned: it refers to its image and site array.
  data& operator=(const data&) = delete;

  /// The image.
  const I& f() const { return f_; }

  /// The sites in sweep order.
  const S& domain() const { return s_; }

  /// The tree by node numbers.
  const node_table<I>& table() const { return table_; }

  /// The parent of every site, see `parent`; the border means nothing. First call: one pass, 4 bytes a site.
  const parent_image_t& parent_image() const {
    if (!parent_.is_valid()) parent_ = internal::parent_image_of(f_, table_);
    return parent_;
  }

  /// The children of every node, see `children`. First call: two walks, a list (24 bytes) a site; makes all lists.
  const children_image_t& children_image() const {
    if (!children_.is_valid()) make_children();
    return children_;
  }

  /// The nodes, each before its parent. First call: a walk over the site array.
  const nodes_t& nodes() const {
    if (nodes_.nsites() == 0) make_nodes();
    return nodes_;
  }

  /// The leaves, in the order of `nodes()`. The first call makes `children_image()` too.
  const nodes_t& leaves() const {
    if (!children_.is_valid()) make_children();
    return leaves_;
  }

  /// Number of roots, counted with `nodes()`: 1 if the neighbourhood connects the domain, as `c4()` and `c8()` do.
  unsigned nroots() const {
    nodes();
    return nroots_;
  }

  /// The canonical site of the node of `p`; if `p` is canonical, that of the parent node; the root for the root.
  const psite& parent(const psite& p) const { return internal::parent_in(table_, p); }

  /// The children of the node `p`, in the order of `nodes()`; none for a site that is no node. See `children_image()`.
  const nodes_t& children(const psite& p) const { return children_image()(p); }

  /// Whether `p` is its own parent.
  bool is_root(const psite& p) const { return parent(p) == p; }

  /// Whether `p` is the canonical site of its node.
  bool is_a_node(const psite& p) const { return table_.canonical[table_.number(p)] == p; }

  /// Whether `p` has no children; true for a site that is no node. See `children_image()`.
  bool is_a_leaf(const psite& p) const { return children(p).nsites() == 0; }

 private:
  void make_nodes() const {
    nodes_.vect_.reserve(table_.nnodes());
    typename S::bkd_piter p(s_);
    for (p.start(); p.is_valid(); p.next()) {
      if (!is_a_node(p)) continue;
      nodes_.insert(p);
      if (is_root(p)) ++nroots_;
    }
  }

  /// Each list gets one block of its final size. Children come before their parent: the list of a node is complete when
  /// the walk reaches the node.
  void make_children() const {
    children_image_t children;
    qel::internal::check_init(&children_image_t::init_);
    children.init_(f_.domain(), f_.border());
    std::vector<unsigned> count(table_.nnodes());
    for (unsigned k = 0; k < count.size(); ++k) {
      const unsigned parent = internal::node_sheet::number(table_.parent[k]);
      if (parent != k) ++count[parent];
    }
    for (unsigned k = 0; k < count.size(); ++k) children(table_.canonical[k]).vect_.reserve(count[k]);
    nodes_t leaves;
    for (const site& n : nodes().vect_) {
      if (children(n).nsites() == 0) leaves.insert(n);
      if (!is_root(n)) children(parent(n)).insert(n);
    }
    leaves_ = std::move(leaves);
    children_ = children;
  }

  const I& f_;
  const S& s_;
  node_table<I> table_;
  mutable parent_image_t parent_;
  mutable children_image_t children_;
  mutable nodes_t nodes_;
  mutable nodes_t leaves_;
  mutable unsigned nroots_ = 0;
};

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_DATA_HPP

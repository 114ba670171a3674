// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_NODE_CHILDREN_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_NODE_CHILDREN_HPP

#include <qel/core/point2d.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether a node has so many children that to sort them takes more time and memory than to sort the sites.
///
/// Cost: one pass over the nodes. \throws std::bad_alloc
template <typename T>
bool has_wide_node(const node_tree<T>& tree) {
  constexpr unsigned wide = 1u << 14;
  if (tree.nnodes() <= wide) return false;
  std::vector<unsigned> nchildren(tree.nnodes());
  for (const point2d& parent : tree.table().parent)
    if (++nchildren[node_sheet::number(parent)] > wide) return true;
  return false;
}

/// The children of each node as linked lists, in the order in which the sweep hands them to their parent. For values of
/// 16 bits or less.
template <typename T>
class node_children {
 public:
  /// \param order of the sweep that made `tree`. \pre `tree` outlives this object.
  ///
  /// Cost: one pass over the nodes. \throws std::bad_alloc
  node_children(const node_tree<T>& tree, const sweep_order& order)
      : tree_(tree), order_(order), youngest_(tree.nnodes(), none), older_(tree.nnodes(), none), sorted_(few) {
    const auto& parents = tree.table().parent;
    for (unsigned k = 0; k < tree.nnodes(); ++k) {
      const unsigned parent = node_sheet::number(parents[k]);
      if (parent != k) older_[k] = std::exchange(youngest_[parent], k);
    }
  }

  /// Calls `visit(number)` for the children of node number `k`, from the last to the first canonical site in the site
  /// array. Cost: that of sorting them. \throws std::bad_alloc
  template <typename Visit>
  void for_each(unsigned k, Visit visit) {
    const unsigned first = youngest_[k];
    if (first == none) return;
    if (older_[first] == none) return visit(first);
    unsigned n = 0;
    for (unsigned c = first; c != none; c = older_[c]) {
      if (n == sorted_.size()) sorted_.resize(std::size_t{2} * n);
      insert({key_of(c), c}, n++);
    }
    if (n > few) std::sort(sorted_.begin(), sorted_.begin() + n, is_before);
    for (unsigned i = 0; i < n; ++i) visit(sorted_[i].number);
  }

 private:
  static constexpr unsigned none = ~0u;
  static constexpr unsigned few = 16;

  struct child {
    std::uint64_t key;
    unsigned number;
  };

  static bool is_before(const child& l, const child& r) { return l.key < r.key; }

  /// Adds `c` to the first `n` children, in order while they are few: most nodes have one or two.
  void insert(const child& c, unsigned n) {
    child* place = sorted_.data() + n;
    if (n < few)
      for (; place != sorted_.data() && is_before(c, place[-1]); --place) *place = place[-1];
    *place = c;
  }

  /// Least for the child that comes first: value and position in one number, turned round as the sweep goes.
  std::uint64_t key_of(unsigned c) const {
    using limits = std::numeric_limits<typename T::value>;
    const typename T::value v = tree_.f().element(c);
    const auto value = static_cast<unsigned>(order_.increasing ? limits::max() - v : v - limits::min());
    const auto& p = tree_.table().canonical[c];
    const unsigned position =
        (static_cast<unsigned>(p.row()) + 0x8000u) << 16 | (static_cast<unsigned>(p.col()) + 0x8000u);
    return std::uint64_t{value} << 32 | (order_.raster_ties ? ~position : position);
  }

  const node_tree<T>& tree_;
  sweep_order order_;
  std::vector<unsigned> youngest_;
  std::vector<unsigned> older_;
  std::vector<child> sorted_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_NODE_CHILDREN_HPP

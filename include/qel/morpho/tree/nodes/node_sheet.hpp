// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_NODES_NODE_SHEET_HPP
#define QEL_MORPHO_TREE_NODES_NODE_SHEET_HPP

#include <qel/core/box2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>

#include <algorithm>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// A domain whose sites stand for nodes: node number k is the site number k in raster order.
///
/// Rows of 32768 sites without border: the number of a node is its place in the block of an image on the sheet, and
/// number and site lead to each other without a table.
struct node_sheet {
  static constexpr unsigned ncols = 32768;

  /// The sheet of `n` nodes. It may have more sites: beyond the first row it has whole rows, and for a single node two
  /// sites, because a fill of one element leaves its trace scope open.
  static box2d domain(unsigned n) {
    const unsigned last = std::max(n, 2u) - 1;
    return {point2d(0, 0), point2d(qel::internal::narrowed<short>(last / ncols),
                                   qel::internal::narrowed<short>(std::min(last, ncols - 1)))};
  }

  static point2d site(unsigned number) {
    return {qel::internal::narrowed<short>(number / ncols), qel::internal::narrowed<short>(number % ncols)};
  }

  static unsigned number(const point2d& site) {
    return static_cast<unsigned>(site.row()) * ncols + static_cast<unsigned>(site.col());
  }
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_NODES_NODE_SHEET_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOODED_NODES_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOODED_NODES_HPP

#include <qel/core/internal/large_pages.hpp>
#include <qel/core/point2d.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The nodes that a flood finds, by number.
///
/// Reserves one entry of each list a site, 12 bytes of address space a site, so that the lists never move. Linux backs
/// only what is written; Windows commits all of it. They grow by pieces, each in the nearest cache when written.
struct flooded_nodes {
  /// Where the lists begin: a flood that wrote through the vectors would read them again after each store.
  struct pointers {
    point2d* canonical;
    point2d* parent;
    point2d* upward;
  };

  /// \throws std::bad_alloc
  explicit flooded_nodes(std::size_t nsites) : most(nsites) {
    qel::internal::reserve_large(canonical, nsites);
    qel::internal::reserve_large(parent, nsites);
    qel::internal::reserve_large(upward, nsites);
  }

  pointers data() { return {canonical.data(), parent.data(), upward.data()}; }

  std::size_t size() const { return canonical.size(); }

  /// Adds the next piece. \pre there are fewer nodes than sites.
  void grow() {
    constexpr std::size_t piece = 1024;
    resize(std::min(size() + piece, most));
  }

  /// \pre `n` is at most the number of sites.
  void resize(std::size_t n) {
    canonical.resize(n);
    parent.resize(n);
    upward.resize(n);
  }

  std::size_t most;
  std::vector<point2d> canonical;  ///< the canonical site of each node
  std::vector<point2d> parent;     ///< the parent of each node, as a site of the sheet
  std::vector<point2d> upward;     ///< all nodes, each before its parent
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_FLOODED_NODES_HPP

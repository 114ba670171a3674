// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_GRID_HPP
#define QEL_CORE_GRID_HPP

namespace qel {

/// The grids on which sites can lie.
namespace grid {

/// The square grid in two dimensions, a tag.
struct square {
  /// Coordinates of a site: row and column.
  static constexpr unsigned dim = 2;
};

}  // namespace grid

}  // namespace qel

#endif  // QEL_CORE_GRID_HPP

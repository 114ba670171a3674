// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_GRID_HPP
#define QEL_CORE_GRID_HPP

namespace qel {

namespace grid {

/// The square grid in two dimensions, a tag.
struct square {
  static constexpr unsigned dim = 2;
};

}  // namespace grid

}  // namespace qel

#endif  // QEL_CORE_GRID_HPP

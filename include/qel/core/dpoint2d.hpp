// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_DPOINT2D_HPP
#define QEL_CORE_DPOINT2D_HPP

#include <qel/core/concept/object.hpp>
#include <qel/core/grid.hpp>
#include <qel/core/internal/coord_impl.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/internal/wrapping.hpp>

#include <array>

namespace qel {

/// A displacement between two sites of the grid G: rows down and columns to the right.
///
/// `row()`, `col()` and `operator[]` (0: row, 1: column) read and write the coordinates.
template <typename G, typename C>
struct dpoint : Object<dpoint<G, C>>, internal::mutable_coord_impl_<G::dim, C, dpoint<G, C>> {
  /// A coordinate; signed, in sites.
  using coord = C;

  /// Unset coordinates.
  dpoint() = default;

  /// Each value is reduced to the width of a coordinate.
  template <typename Row, typename Col>
  dpoint(Row row, Col col) : coord_{internal::narrowed<C>(row), internal::narrowed<C>(col)} {}

  /// The two coordinates, unchanged.
  std::array<C, 2> to_vec() const { return {coord_[0], coord_[1]}; }

  /// The mirrored displacement; the least coordinate is its own mirror.
  dpoint operator-() const {
    return {internal::wrapping_sub(C(0), coord_[0]), internal::wrapping_sub(C(0), coord_[1])};
  }

  /// Whether both coordinates are equal.
  friend bool operator==(const dpoint& a, const dpoint& b) {
    return a.coord_[0] == b.coord_[0] && a.coord_[1] == b.coord_[1];
  }
  /// Whether a coordinate differs.
  friend bool operator!=(const dpoint& a, const dpoint& b) { return !(a == b); }

 private:
  friend internal::mutable_coord_impl_<G::dim, C, dpoint>;
  C coord_[2];
};

/// A displacement in the plane, two signed 16-bit coordinates.
using dpoint2d = dpoint<grid::square, short>;

}  // namespace qel

#endif  // QEL_CORE_DPOINT2D_HPP

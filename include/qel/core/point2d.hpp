// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_POINT2D_HPP
#define QEL_CORE_POINT2D_HPP

#include <qel/core/concept/object.hpp>
#include <qel/core/dpoint2d.hpp>
#include <qel/core/grid.hpp>
#include <qel/core/internal/coord_impl.hpp>
#include <qel/core/internal/narrowed.hpp>

#include <array>
#include <limits>

namespace qel {

/// A site of the grid G: a plain value of two coordinates, the row and the column.
///
/// Sites are stored by the million (parent images, sorted arrays), so coordinates have 16 bits: 4 bytes a site.
/// `row()`, `col()` and `operator[]` (0: row, 1: column) read and write them.
template <typename G, typename C>
struct point : Object<point<G, C>>, internal::mutable_coord_impl_<G::dim, C, point<G, C>> {
  /// A coordinate; signed, because the border of an image lies at negative ones.
  using coord = C;
  /// The displacement from one such site to another.
  using dpsite = dpoint<G, C>;

  /// Unset coordinates: to allocate an image of sites costs no pass.
  point() = default;

  /// The site of row `row` and column `col`; (0, 0) is the top left site of most images.
  point(C row, C col) : coord_{row, col} {}

  /// The greatest site in row-major order.
  static const point& plus_infty() {
    static const point p(std::numeric_limits<C>::max(), std::numeric_limits<C>::max());
    return p;
  }

  /// The least site in row-major order.
  static const point& minus_infty() {
    static const point p(std::numeric_limits<C>::min(), std::numeric_limits<C>::min());
    return p;
  }

  /// The two coordinates in single precision, which is exact for 16 bits.
  std::array<float, 2> to_vec() const { return {static_cast<float>(coord_[0]), static_cast<float>(coord_[1])}; }

  /// Whether both coordinates are equal.
  friend bool operator==(const point& a, const point& b) {
    return a.coord_[0] == b.coord_[0] && a.coord_[1] == b.coord_[1];
  }
  /// Whether a coordinate differs.
  friend bool operator!=(const point& a, const point& b) { return !(a == b); }

  /// The site to which `dp` leads from `p`. Each coordinate wraps, at 16 bits: (32767, 0) + (1, 0) is (-32768, 0).
  friend point operator+(const point& p, const dpsite& dp) {
    return {internal::narrowed<C>(p.row() + dp.row()), internal::narrowed<C>(p.col() + dp.col())};
  }
  /// The site from which `dp` leads to `p`; wraps in the same way.
  friend point operator-(const point& p, const dpsite& dp) {
    return {internal::narrowed<C>(p.row() - dp.row()), internal::narrowed<C>(p.col() - dp.col())};
  }

 private:
  friend internal::mutable_coord_impl_<G::dim, C, point>;
  C coord_[2];
};

/// A site of the plane, two signed 16-bit coordinates.
using point2d = point<grid::square, short>;

// Declared outside the class too: only so are they found for iterators and stored positions, which stand in for sites.

/// Whether both coordinates are equal; also for what stands in for a site.
inline bool operator==(const point2d& a, const point2d& b);
/// Whether a coordinate differs; also for what stands in for a site.
inline bool operator!=(const point2d& a, const point2d& b);
/// The site to which `dp` leads from `p`, modulo 65536; also for what stands in for a site.
inline point2d operator+(const point2d& p, const dpoint2d& dp);
/// The site from which `dp` leads to `p`, modulo 65536; also for what stands in for a site.
inline point2d operator-(const point2d& p, const dpoint2d& dp);

}  // namespace qel

#endif  // QEL_CORE_POINT2D_HPP

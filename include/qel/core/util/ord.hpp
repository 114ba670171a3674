// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_UTIL_ORD_HPP
#define QEL_CORE_UTIL_ORD_HPP

// The orders of the library: row-major on sites and displacements, less-than on numbers.
//
// Tie orders, site arrays and windows stand on `ord_strict`: another order would change the canonical sites of a tree
// and the rounding of the float attributes.

#include <qel/core/dpoint2d.hpp>
#include <qel/core/grid.hpp>
#include <qel/core/point2d.hpp>

#include <type_traits>

namespace qel {

/// Containers, pointers and orders that know nothing of images.
namespace util {

/// Less-than on numbers; false if one is NaN.
template <typename T>
constexpr std::enable_if_t<std::is_arithmetic_v<T>, bool> ord_strict(const T& a, const T& b) {
  return a < b;
}

/// Row-major: by row, then by column, on signed values.
template <typename G, typename C>
bool ord_strict(const point<G, C>& a, const point<G, C>& b) {
  return a.row() != b.row() ? a.row() < b.row() : a.col() < b.col();
}

/// The same on displacements.
template <typename G, typename C>
bool ord_strict(const dpoint<G, C>& a, const dpoint<G, C>& b) {
  return a.row() != b.row() ? a.row() < b.row() : a.col() < b.col();
}

/// Row-major; two equal sites are in order.
template <typename G, typename C>
bool ord_weak(const point<G, C>& a, const point<G, C>& b) {
  return !ord_strict(b, a);
}

/// The same on displacements.
template <typename G, typename C>
bool ord_weak(const dpoint<G, C>& a, const dpoint<G, C>& b) {
  return !ord_strict(b, a);
}

/// Row-major, for what stands in for a site: the template does not look through an iterator.
inline bool ord_strict(const point2d& a, const point2d& b) { return ord_strict<grid::square, short>(a, b); }

/// The same; two equal sites are in order.
inline bool ord_weak(const point2d& a, const point2d& b) { return ord_weak<grid::square, short>(a, b); }

/// `ord_strict` as a function object, for the standard containers.
template <typename T>
struct ord {
  /// Whether `a` comes before `b`; false for equal ones.
  bool operator()(const T& a, const T& b) const { return ord_strict(a, b); }
};

}  // namespace util

}  // namespace qel

#endif  // QEL_CORE_UTIL_ORD_HPP

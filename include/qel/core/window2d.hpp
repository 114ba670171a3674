// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_WINDOW2D_HPP
#define QEL_CORE_WINDOW2D_HPP

#include <qel/core/concept/window.hpp>
#include <qel/core/dpoint2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/util/set.hpp>

#include <algorithm>
#include <cstdlib>

namespace qel {

template <typename W>
struct dpsites_fwd_piter;

namespace internal {

template <typename D, typename E>
struct window_base : Window<E> {
  using dpsite = D;

  bool is_valid() const { return true; }

 protected:
  window_base() = default;
};

}  // namespace internal

/// A set of displacements, numbered in ascending row-major order. A Window with the type `dpsite`, a displacement.
template <typename D>
class window : public internal::window_base<D, window<D>> {
 public:
  /// A site that a displacement may lead to.
  using site = point2d;
  /// A walk stands on the site itself.
  using psite = point2d;
  /// The walk over the sites around a centre.
  using fwd_piter = dpsites_fwd_piter<window>;

  /// Adds `dp`, unless it is there already; the numbers of greater ones move up. \throws std::bad_alloc
  void insert(const D& dp) { dps_.insert(dp); }

  /// Removes all displacements.
  void clear() { dps_.clear(); }

  /// Number of displacements.
  unsigned size() const { return dps_.nelements(); }

  /// Displacement number `i`. \pre `i < size()`.
  const D& dp(unsigned i) const { return dps_[i]; }

  /// Whether `dp` is one of the displacements. Cost: logarithmic in their number.
  bool has(const D& dp) const { return dps_.has(dp); }

  /// Whether the null displacement is in the window.
  bool is_centered() const { return has(D(0, 0)); }

  /// The largest absolute coordinate, in sites; 0 for an empty window.
  unsigned delta() const {
    int d = 0;
    for (const D& dp : dps_.vect()) d = std::max({d, std::abs(int{dp.row()}), std::abs(int{dp.col()})});
    return internal::narrowed<unsigned>(d);
  }

  /// Becomes its own mirror image.
  void sym() {
    window mirrored;
    for (const D& dp : dps_.vect()) mirrored.insert(-dp);
    *this = mirrored;
  }

  /// Whether each displacement has its opposite: two neighbours see each other.
  bool is_symmetric() const {
    window mirrored = *this;
    mirrored.sym();
    return mirrored == *this;
  }

  /// The displacements themselves.
  const util::set<D>& std_set() const { return dps_; }

  /// Whether both have the same displacements.
  friend bool operator==(const window& a, const window& b) { return a.dps_ == b.dps_; }

 private:
  util::set<D> dps_;
};

/// A window in the plane.
using window2d = window<dpoint2d>;

}  // namespace qel

#endif  // QEL_CORE_WINDOW2D_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_BOX2D_HPP
#define QEL_CORE_BOX2D_HPP

#include <qel/core/concept/box.hpp>
#include <qel/core/concept/object.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/util/ord.hpp>

namespace qel {

template <typename P>
struct box_fwd_piter_;
template <typename P>
struct box_runstart_piter;

namespace internal {

/// Gives the box class E of `n` coordinates of type C `pmin_row()` and its like.
template <unsigned n, typename C, typename E>
struct box_impl_;

template <typename C, typename E>
struct box_impl_<2, C, E> {
  C pmin_row() const { return exact().pmin().row(); }
  C pmin_col() const { return exact().pmin().col(); }
  C pmax_row() const { return exact().pmax().row(); }
  C pmax_col() const { return exact().pmax().col(); }

 protected:
  box_impl_() = default;

 private:
  const E& exact() const { return force_exact<E>(*this); }
};

}  // namespace internal

/// The rectangle of the sites between two inclusive corners.
///
/// `is_valid()` compares the corners in row-major order, not axis by axis: columns count only when the rows are equal.
/// So a box with rows in order and columns the wrong way round is valid; its length wraps, and it `has` no site.
///
/// `pmin_row()`, `pmin_col()`, `pmax_row()` and `pmax_col()` are the coordinates of the corners; lengths and number of
/// sites come from `Box`.
template <typename P>
struct box : Box<box<P>>, internal::box_impl_<2, typename P::coord, box<P>> {
  /// A site of the box.
  using site = P;
  /// A walk stands on the site itself.
  using psite = P;
  /// The walk over the box, in raster order.
  using fwd_piter = box_fwd_piter_<P>;

  /// An invalid box without sites.
  box() : pmin_(P::plus_infty()), pmax_(P::minus_infty()) {}

  /// The sites from `pmin` to `pmax`, both included. Nothing is checked: see `is_valid()`.
  box(const P& pmin, const P& pmax) : pmin_(pmin), pmax_(pmax) {}

  /// The corner with the least row and column.
  const P& pmin() const { return pmin_; }
  /// The same, writable.
  P& pmin() { return pmin_; }

  /// The corner with the greatest row and column; it lies in the box.
  const P& pmax() const { return pmax_; }
  /// The same, writable.
  P& pmax() { return pmax_; }

  /// Whether `pmin()` does not come after `pmax()` in row-major order.
  bool is_valid() const { return util::ord_weak(pmin_, pmax_); }

  /// Whether `p` lies in the box, axis by axis; the box may be invalid.
  bool has(const P& p) const {
    return pmin_.row() <= p.row() && p.row() <= pmax_.row() && pmin_.col() <= p.col() && p.col() <= pmax_.col();
  }

  /// Two invalid boxes are equal, whatever their corners: neither has a site.
  friend bool operator==(const box& a, const box& b) {
    if (!a.is_valid() || !b.is_valid()) return a.is_valid() == b.is_valid();
    return a.pmin_ == b.pmin_ && a.pmax_ == b.pmax_;
  }
  /// The opposite of `==`.
  friend bool operator!=(const box& a, const box& b) { return !(a == b); }

 private:
  P pmin_;
  P pmax_;
};

/// A rectangle of sites in the plane.
using box2d = box<point2d>;

}  // namespace qel

#endif  // QEL_CORE_BOX2D_HPP

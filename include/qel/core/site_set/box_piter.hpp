// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_SITE_SET_BOX_PITER_HPP
#define QEL_CORE_SITE_SET_BOX_PITER_HPP

// The walks over a box.

#include <qel/core/box2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/internal/site_set_iterator_base.hpp>

namespace qel {

/// Visits all sites of a box in raster order: rows from the top, columns from the left. A Site_Iterator.
///
/// The end mark is the row after the last. It is stored in 16 bits and compared in 32, so the walk never ends on a box
/// whose last row is 32767. An image with a border stops short of that row; one without can have it.
template <typename P>
struct box_fwd_piter_ : internal::site_set_iterator_base<box<P>, box_fwd_piter_<P>> {
  /// A coordinate of a site.
  using coord = typename P::coord;

  /// A walk without a target, invalid until it has one.
  box_fwd_piter_() = default;
  /// A walk over `b`, invalid until `start()`. \pre `b` outlives it.
  explicit box_fwd_piter_(const box<P>& b) { this->change_target(b); }
  explicit box_fwd_piter_(const box<P>&&) = delete;

  void start_() { this->p_ = this->s_->pmin(); }

  void next_() {
    const box<P>& b = *this->s_;
    P& p = this->p_;
    if (p.col() != b.pmax_col()) {
      p.col() = internal::narrowed<coord>(p.col() + 1);
      return;
    }
    p.col() = b.pmin_col();
    if (p.row() != b.pmax_row()) {
      p.row() = internal::narrowed<coord>(p.row() + 1);
      return;
    }
    invalidate_();
  }

  bool is_valid_() const { return this->p_.row() != this->s_->pmax_row() + 1; }

  void invalidate_() { this->p_.row() = internal::narrowed<coord>(this->s_->pmax_row() + 1); }
};

/// Visits the first site of each row of a box, from the top. A Site_Iterator.
///
/// Here the end mark is stored and compared in 16 bits: the walk ends on a box whose last row is 32767, too.
template <typename P>
struct box_runstart_piter : internal::site_set_iterator_base<box<P>, box_runstart_piter<P>> {
  /// A coordinate of a site.
  using coord = typename P::coord;

  /// A walk without a target, invalid until it has one.
  box_runstart_piter() = default;
  /// A walk over the rows of `b`, invalid until `start()`. \pre `b` outlives it.
  explicit box_runstart_piter(const box<P>& b) { this->change_target(b); }
  explicit box_runstart_piter(const box<P>&&) = delete;

  void start_() { this->p_ = this->s_->pmin(); }

  void next_() {
    const box<P>& b = *this->s_;
    P& p = this->p_;
    p.row() = p.row() != b.pmax_row() ? internal::narrowed<coord>(p.row() + 1) : b.pmin_row();
    if (p == b.pmin()) invalidate_();
  }

  bool is_valid_() const { return this->p_.row() != end_row(); }

  void invalidate_() { this->p_.row() = end_row(); }

 private:
  coord end_row() const { return internal::narrowed<coord>(this->s_->pmax_row() + 1); }
};

}  // namespace qel

#endif  // QEL_CORE_SITE_SET_BOX_PITER_HPP

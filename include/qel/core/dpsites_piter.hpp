// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_DPSITES_PITER_HPP
#define QEL_CORE_DPSITES_PITER_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/internal/site_relative_iterator_base.hpp>

namespace qel {

/// Visits the sites that the displacements of a window W reach from a centre, in the order of the window.
///
/// A Site_Iterator; `center_at(p)` sends it around another centre.
template <typename W>
struct dpsites_fwd_piter : internal::site_relative_iterator_base<W, dpsites_fwd_piter<W>> {
  /// What keeps the window, the centre and the current site.
  using base = internal::site_relative_iterator_base<W, dpsites_fwd_piter<W>>;
  /// A site of the window's grid.
  using psite = typename W::psite;

  /// A walk without window and centre, invalid until it has both.
  dpsites_fwd_piter() = default;

  /// A walk over the sites of `win` around `center`, invalid until `start()`.
  ///
  /// \pre `win` and `center` outlive the iterator.
  dpsites_fwd_piter(const W& win, const psite& center) {
    this->change_target(win);
    this->center_at(center);
  }

  void do_start_() { i_ = 0; }
  void do_next_() { ++i_; }
  bool is_valid_() const { return i_ != this->s_->std_set().vect().size(); }
  void invalidate_() { i_ = internal::narrowed<unsigned>(this->s_->std_set().vect().size()); }

  /// The site reached by the current displacement; it may lie outside every image.
  psite compute_p_() const { return *this->c_ + this->s_->dp(i_); }

 private:
  unsigned i_ = 0;
};

}  // namespace qel

#endif  // QEL_CORE_DPSITES_PITER_HPP

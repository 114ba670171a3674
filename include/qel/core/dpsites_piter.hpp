// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_DPSITES_PITER_HPP
#define QEL_CORE_DPSITES_PITER_HPP

#include <qel/core/internal/site_relative_iterator_base.hpp>

namespace qel {

/// Visits the sites that the displacements of a window W reach from a centre, in the order of the window.
///
/// A Site_Iterator; `center_at(p)` gives it another centre.
template <typename W>
struct dpsites_fwd_piter : internal::site_relative_iterator_base<W, dpsites_fwd_piter<W>> {
  /// A displacement.
  using dpsite = typename W::dpsite;
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
  dpsites_fwd_piter(const W&&, const psite&) = delete;
  template <typename P>
  dpsites_fwd_piter(const W&, const P&&) = delete;

  /// Displacement number `i`; the site that it reaches may lie outside every image.
  dpsite dp_(unsigned i) const { return this->s_->dp(i); }
};

}  // namespace qel

#endif  // QEL_CORE_DPSITES_PITER_HPP

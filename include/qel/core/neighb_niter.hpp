// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_NEIGHB_NITER_HPP
#define QEL_CORE_NEIGHB_NITER_HPP

#include <qel/core/internal/site_relative_iterator_base.hpp>

namespace qel {

template <typename W>
class neighb;

/// Visits the neighbours of a moving centre, in the order of the neighbourhood's window. A Site_Iterator.
///
/// It looks at no image: a neighbour may lie outside the domain, so test it with `domain().has`. One iterator serves a
/// whole loop over sites: it follows its centre, and `start()` begins anew at each site.
template <typename W>
struct neighb_fwd_niter : internal::site_relative_iterator_base<neighb<W>, neighb_fwd_niter<W>> {
  /// A displacement.
  using dpsite = typename W::dpsite;
  /// A site of the window's grid.
  using psite = typename W::psite;

  /// A walk without neighbourhood and centre, invalid until it has both.
  neighb_fwd_niter() = default;

  /// A walk over the neighbours of `center` in `nbh`, invalid until `start()`.
  ///
  /// \param nbh    the neighbourhood; it outlives this iterator.
  /// \param center a site, a site iterator or a stored position; it outlives this iterator.
  neighb_fwd_niter(const neighb<W>& nbh, const psite& center) {
    this->change_target(nbh);
    this->center_at(center);
  }
  neighb_fwd_niter(const neighb<W>&&, const psite&) = delete;
  template <typename P>
  neighb_fwd_niter(const neighb<W>&, const P&&) = delete;

  /// Displacement number `i`.
  dpsite dp_(unsigned i) const { return this->s_->win().dp(i); }
};

}  // namespace qel

#endif  // QEL_CORE_NEIGHB_NITER_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_NEIGHB_NITER_HPP
#define QEL_CORE_NEIGHB_NITER_HPP

#include <qel/core/dpsites_piter.hpp>
#include <qel/core/internal/site_relative_iterator_base.hpp>

namespace qel {

template <typename W>
class neighb;

/// Visits the neighbours of a moving centre, in the order of the neighbourhood's window. A Site_Iterator.
///
/// It looks at no image: a neighbour may lie outside the domain, and the caller tests it with `domain().has`.
/// One iterator serves a whole loop over sites, since it follows its centre; it is only started anew at each
/// site.
template <typename W>
struct neighb_fwd_niter : internal::site_relative_iterator_base<neighb<W>, neighb_fwd_niter<W>> {
  /// What keeps the neighbourhood, the centre and the current site.
  using base = internal::site_relative_iterator_base<neighb<W>, neighb_fwd_niter<W>>;
  /// A site of the window's grid.
  using psite = typename W::psite;

  /// A walk without neighbourhood and centre, invalid until it has both.
  neighb_fwd_niter() = default;

  /// A walk over the neighbours of `center` in `nbh`, invalid until `start()`.
  ///
  /// \param nbh    the neighbourhood; it outlives this iterator.
  /// \param center a site iterator or stored position; it outlives this iterator.
  neighb_fwd_niter(const neighb<W>& nbh, const psite& center) {
    change_target(nbh);
    center_at(center);
  }

  /// Walks over the neighbours in `nbh` from now on.
  void change_target(const neighb<W>& nbh) {
    i_.change_target(nbh.win());
    base::change_target(nbh);
  }

  /// Walks around `center` from now on.
  void center_at(const psite& center) {
    i_.center_at(center);
    base::center_at(center);
  }

  void do_start_() { i_.start_(); }
  void do_next_() { i_.next_(); }
  bool is_valid_() const { return i_.is_valid_(); }
  void invalidate_() { i_.invalidate_(); }
  psite compute_p_() const { return i_.to_site(); }

 private:
  dpsites_fwd_piter<W> i_;
};

}  // namespace qel

#endif  // QEL_CORE_NEIGHB_NITER_HPP

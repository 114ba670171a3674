// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_SITE_RELATIVE_ITERATOR_BASE_HPP
#define QEL_CORE_INTERNAL_SITE_RELATIVE_ITERATOR_BASE_HPP

#include <qel/core/internal/if_possible.hpp>
#include <qel/core/internal/site_iterator_base.hpp>

namespace qel {

namespace internal {

/// A walk over the sites around a centre, relative to which the target S is defined.
///
/// The centre is a live reference: when the centre iterator steps, so does the centre, and the next `start()`
/// walks around the new one. The exact class gives `do_start_()`, `do_next_()` and `compute_p_()`.
template <typename S, typename E>
struct site_relative_iterator_base : site_iterator_base<S, E> {
  using psite = typename S::psite;

  /// Binds the walk to `s`; it is invalid until `start()`.
  void change_target(const S& s) {
    s_ = &s;
    if_possible::change_target(p_, s);
    this->invalidate();
  }

  /// Walks around `center` from now on, a site or what stands in for one. \pre `center` outlives the walk.
  void center_at(const psite& center) {
    c_ = &center;
    this->invalidate();
  }

  const psite& subj_() const { return p_; }

  void start_() {
    exact().do_start_();
    if (this->is_valid()) p_ = exact().compute_p_();
  }

  void next_() {
    exact().do_next_();
    if (this->is_valid()) p_ = exact().compute_p_();
  }

 protected:
  site_relative_iterator_base() = default;

  const S* s_ = nullptr;
  const psite* c_ = nullptr;
  psite p_{};

 private:
  friend struct site_iterator_base<S, E>;

  E& exact() { return force_exact<E>(*this); }
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_SITE_RELATIVE_ITERATOR_BASE_HPP

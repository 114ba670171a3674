// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_SITE_RELATIVE_ITERATOR_BASE_HPP
#define QEL_CORE_INTERNAL_SITE_RELATIVE_ITERATOR_BASE_HPP

#include <qel/core/internal/site_set_iterator_base.hpp>

namespace qel {

namespace internal {

/// A walk over the sites that the numbered displacements of the target S reach from a centre.
///
/// The centre is a live reference: when the centre iterator steps, the next `start()` walks around the new centre.
/// `size()` of S is the number of displacements; the exact class gives `dp_(i)`.
template <typename S, typename E>
struct site_relative_iterator_base : site_set_iterator_base<S, E> {
  using psite = typename S::psite;

  /// Walks around `center` from now on, a site or what stands in for one. \pre `center` outlives the walk.
  void center_at(const psite& center) {
    c_ = &center;
    this->invalidate();
  }
  /// A temporary centre would be gone at the first step.
  template <typename P>
  void center_at(const P&& center) = delete;

  void start_() { go_to(0); }
  void next_() { go_to(i_ + 1); }
  bool is_valid_() const { return i_ != this->s_->size(); }
  void invalidate_() { i_ = this->s_->size(); }

 protected:
  site_relative_iterator_base() = default;

 private:
  void go_to(unsigned i) {
    i_ = i;
    if (is_valid_()) this->p_ = *c_ + force_exact<E>(*this).dp_(i_);
  }

  const psite* c_ = nullptr;
  unsigned i_ = 0;  ///< the number of the current displacement
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_SITE_RELATIVE_ITERATOR_BASE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_SITE_SET_ITERATOR_BASE_HPP
#define QEL_CORE_INTERNAL_SITE_SET_ITERATOR_BASE_HPP

#include <qel/core/internal/site_iterator_base.hpp>

namespace qel {

/// Hooks that a class may lack.
namespace if_possible {

namespace internal {

template <typename Psite, typename S>
auto change_target(Psite& p, const S& s, int) -> decltype(p.change_target(s)) {
  p.change_target(s);
}

template <typename Psite, typename S>
void change_target(Psite&, const S&, long) {}

}  // namespace internal

/// Tells a stored position which set it now belongs to. A plain site has no `change_target` and belongs to none.
template <typename Psite, typename S>
void change_target(Psite& p, const S& s) {
  internal::change_target(p, s, 0);
}

}  // namespace if_possible

namespace internal {

/// An iterator over a target S, a site set or what reaches sites from a centre, with its current position. The caller
/// keeps the target alive and unchanged during the walk.
template <typename S, typename E>
struct site_set_iterator_base : site_iterator_base<S, E> {
  /// Binds the iterator to `s`; it is invalid until `start()`.
  void change_target(const S& s) {
    s_ = &s;
    if_possible::change_target(p_, s);
    this->invalidate();
  }
  void change_target(const S&&) = delete;

  const typename S::psite& subj_() const { return p_; }

 protected:
  site_set_iterator_base() = default;

  const S* s_ = nullptr;
  typename S::psite p_{};

 private:
  friend struct site_iterator_base<S, E>;
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_SITE_SET_ITERATOR_BASE_HPP

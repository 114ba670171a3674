// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_PITER_ADAPTOR_HPP
#define QEL_MORPHO_TREE_PITER_ADAPTOR_HPP

#include <qel/core/internal/site_iterator_base.hpp>

namespace qel {

namespace internal {

/// The walk of the wrapped iterator Pi over S, under another name.
template <typename Pi, typename S, typename E>
struct piter_adaptor_ : site_iterator_base<S, E> {
  /// Binds both iterators to `s`; they are invalid until `start()`.
  void change_target(const S& s) {
    s_ = &s;
    pi_.change_target(s);
    this->invalidate();
  }

  const typename S::psite& subj_() const { return pi_.subj_(); }

  void start_() { pi_.start(); }
  void next_() { pi_.next(); }
  bool is_valid_() const { return pi_.is_valid(); }
  void invalidate_() { pi_.invalidate(); }

 protected:
  piter_adaptor_() = default;

 private:
  friend struct site_iterator_base<S, E>;

  const S* s_ = nullptr;
  Pi pi_;
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_MORPHO_TREE_PITER_ADAPTOR_HPP

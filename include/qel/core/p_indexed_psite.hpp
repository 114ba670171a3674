// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_P_INDEXED_PSITE_HPP
#define QEL_CORE_P_INDEXED_PSITE_HPP

#include <qel/core/internal/pseudo_site_base.hpp>

namespace qel {

/// A position in a site array S: an index with the site found there.
///
/// The site is cached, so that reading an image at a position costs no lookup in the array. Past either end
/// the index is a legal value and the last site stays cached.
template <typename S>
struct p_indexed_psite : internal::pseudo_site_base_<const typename S::site&, p_indexed_psite<S>> {
  using site = typename S::site;

  p_indexed_psite() = default;

  /// Moves to the array `s`, before its first site.
  void change_target(const S& s) {
    s_ = &s;
    i_ = -1;
  }

  void change_index(int i) {
    i_ = i;
    update_();
  }

  void inc_index() {
    ++i_;
    update_();
  }

  void dec_index() {
    --i_;
    update_();
  }

  int index() const { return i_; }

  /// The array, or null.
  const S* target_() const { return s_; }

  /// The cached site.
  const site& subj_() const { return p_; }
  const site& unproxy_() const { return p_; }

  /// Reads the site at the index, if there is one.
  void update_() {
    if (s_ != nullptr && i_ >= 0 && static_cast<unsigned>(i_) < s_->nsites()) p_ = (*s_)[static_cast<unsigned>(i_)];
  }

 private:
  const S* s_ = nullptr;
  int i_ = 0;
  site p_{};
};

}  // namespace qel

#endif  // QEL_CORE_P_INDEXED_PSITE_HPP

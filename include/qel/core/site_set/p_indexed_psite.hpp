// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_SITE_SET_P_INDEXED_PSITE_HPP
#define QEL_CORE_SITE_SET_P_INDEXED_PSITE_HPP

#include <qel/core/internal/pseudo_site_base.hpp>

namespace qel {

/// A position in a site array S: an index with the site found there.
///
/// The site is cached: to read an image at a position costs no lookup in the array. The index may pass either end; the
/// last site stays cached then.
template <typename S>
struct p_indexed_psite : internal::pseudo_site_base_<const typename S::site&, p_indexed_psite<S>> {
  /// The site that the position stands for and converts to.
  using site = typename S::site;

  /// A position in no array, at index 0.
  p_indexed_psite() = default;

  /// Moves to the array `s`, before its first site.
  void change_target(const S& s) {
    s_ = &s;
    i_ = -1;
  }

  /// Goes to the index `i`, which may lie outside the array.
  void change_index(int i) {
    i_ = i;
    update_();
  }

  /// Goes to the following site of the array.
  void inc_index() {
    ++i_;
    update_();
  }

  /// Goes to the preceding site of the array.
  void dec_index() {
    --i_;
    update_();
  }

  /// The index, from -1 (before the first site) to the number of sites (past the last) in a walk.
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

#endif  // QEL_CORE_SITE_SET_P_INDEXED_PSITE_HPP

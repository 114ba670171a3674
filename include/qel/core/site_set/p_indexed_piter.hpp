// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_SITE_SET_P_INDEXED_PITER_HPP
#define QEL_CORE_SITE_SET_P_INDEXED_PITER_HPP

// The walks over a site array.

#include <qel/core/internal/site_set_iterator_base.hpp>

namespace qel {

/// Visits the sites of an array in its order. It ends on the count; the last site stays cached. A Site_Iterator.
template <typename S>
struct p_indexed_fwd_piter : internal::site_set_iterator_base<S, p_indexed_fwd_piter<S>> {
  /// A walk without a target, invalid until it has one.
  p_indexed_fwd_piter() = default;
  /// A walk over `s`, invalid until `start()`. \pre `s` outlives it and is not changed during the walk.
  explicit p_indexed_fwd_piter(const S& s) { this->change_target(s); }
  explicit p_indexed_fwd_piter(const S&&) = delete;

  void start_() { this->p_.change_index(0); }
  void next_() { this->p_.inc_index(); }
  bool is_valid_() const { return this->p_.index() < static_cast<int>(this->s_->nsites()); }
  void invalidate_() { this->p_.change_index(static_cast<int>(this->s_->nsites())); }
};

/// Visits the sites of an array against its order. It ends on the sign of the index. A Site_Iterator.
template <typename S>
struct p_indexed_bkd_piter : internal::site_set_iterator_base<S, p_indexed_bkd_piter<S>> {
  /// A walk without a target, invalid until it has one.
  p_indexed_bkd_piter() = default;
  /// A walk over `s`, invalid until `start()`. \pre `s` outlives it and is not changed during the walk.
  explicit p_indexed_bkd_piter(const S& s) { this->change_target(s); }
  explicit p_indexed_bkd_piter(const S&&) = delete;

  void start_() { this->p_.change_index(static_cast<int>(this->s_->nsites()) - 1); }
  void next_() { this->p_.dec_index(); }
  bool is_valid_() const { return this->p_.index() >= 0; }
  void invalidate_() { this->p_.change_index(-1); }
};

}  // namespace qel

#endif  // QEL_CORE_SITE_SET_P_INDEXED_PITER_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_SITE_ITERATOR_HPP
#define QEL_CORE_CONCEPT_SITE_ITERATOR_HPP

#include <qel/core/concept/site_proxy.hpp>

namespace qel {

/// The protocol of every walk over sites.
///
///     for (p.start(); p.is_valid(); p.next()) ima(p) = ...;
///
/// The exact class gives `start_()`, `next_()`, `is_valid_()`, `invalidate_()`, and the pointer to its target by
/// `target_()`. An iterator without a target is invalid; one with a target can start again at any time.
///
/// An iterator of the library stands in for its current site, `to_site()`. `change_target(s)` sends one over a site set
/// over another set.
template <typename E>
struct Site_Iterator : Site_Proxy<E> {
  /// Goes to the first site. \pre the iterator has a target.
  void start() { exact().start_(); }

  /// Goes to the following site. \pre the iterator is valid.
  void next() { exact().next_(); }

  /// Whether the iterator stands on a site. False without a target, before `start()` and past the last site.
  bool is_valid() const { return exact().target_() != nullptr && exact().is_valid_(); }

  /// Makes the iterator invalid until the next `start()`; does nothing without a target.
  void invalidate() {
    if (exact().target_() != nullptr) exact().invalidate_();
  }

 protected:
  Site_Iterator() = default;

 private:
  E& exact() { return internal::force_exact<E>(*this); }
  const E& exact() const { return internal::force_exact<E>(*this); }
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_SITE_ITERATOR_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_SITE_ITERATOR_BASE_HPP
#define QEL_CORE_INTERNAL_SITE_ITERATOR_BASE_HPP

#include <qel/core/concept/site_iterator.hpp>
#include <qel/core/internal/proxy.hpp>

namespace qel {

namespace internal {

/// The base of all site iterators: the exact class E walks over a target of type S and stands in for its current site.
template <typename S, typename E>
struct site_iterator_base : Site_Iterator<E>, proxy_impl<const typename S::site&, E> {
  using site = typename S::site;

  const S* target_() const { return force_exact<E>(*this).s_; }

  /// The current site. It changes with the next step: copy it to keep it.
  const site& to_site() const { return *this; }

 protected:
  site_iterator_base() = default;
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_SITE_ITERATOR_BASE_HPP

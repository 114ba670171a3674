// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_PSEUDO_SITE_BASE_HPP
#define QEL_CORE_INTERNAL_PSEUDO_SITE_BASE_HPP

#include <qel/core/concept/site_proxy.hpp>
#include <qel/core/internal/proxy.hpp>

namespace qel {

namespace internal {

/// The base of a stored position: it converts to Subject, a constant reference to a site.
template <typename Subject, typename E>
struct pseudo_site_base_ : Site_Proxy<E>, proxy_impl<Subject, E> {
 protected:
  pseudo_site_base_() = default;
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_PSEUDO_SITE_BASE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_SITE_PROXY_HPP
#define QEL_CORE_CONCEPT_SITE_PROXY_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// Stands in for a site: a site iterator or a stored position.
///
/// A model offers `subj_()`, one step towards the site, and converts to a constant reference to it.
template <typename E>
struct Site_Proxy : Object<E> {
 protected:
  Site_Proxy() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_SITE_PROXY_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_SITE_SET_HPP
#define QEL_CORE_CONCEPT_SITE_SET_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A set of sites that can be walked in a fixed order.
///
/// A model has the types `site`, `psite`, `fwd_piter`, and offers `is_valid()`, `nsites()` and `has(p)`.
template <typename E>
struct Site_Set : Object<E> {
 protected:
  Site_Set() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_SITE_SET_HPP

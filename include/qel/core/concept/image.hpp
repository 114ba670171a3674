// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_IMAGE_HPP
#define QEL_CORE_CONCEPT_IMAGE_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A function from the sites of a domain to values.
///
/// A model has the types `value`, `lvalue`, `rvalue`, `site`, `psite` and `domain_t`, and offers
/// `is_valid()`, `domain()`, `has(p)`, and `operator()(p)` in a const and a non-const form. Algorithms that
/// make images also need `init_(box, border)` and `border()`.
template <typename E>
struct Image : Object<E> {
 protected:
  Image() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_IMAGE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_WINDOW_HPP
#define QEL_CORE_CONCEPT_WINDOW_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A set of displacements, numbered from 0.
///
/// A model has the types `dpsite`, `site` and `psite`, and offers `size()` and `dp(i)`.
template <typename E>
struct Window : Object<E> {
 protected:
  Window() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_WINDOW_HPP

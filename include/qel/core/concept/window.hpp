// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_WINDOW_HPP
#define QEL_CORE_CONCEPT_WINDOW_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A set of displacements; a model has the types `dpsite`, `site` and `psite`.
template <typename E>
struct Window : Object<E> {
 protected:
  Window() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_WINDOW_HPP

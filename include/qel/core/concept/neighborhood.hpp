// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_NEIGHBORHOOD_HPP
#define QEL_CORE_CONCEPT_NEIGHBORHOOD_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A window whose displacements lead to the neighbours of a site; a model offers `win()` and the type `niter`.
template <typename E>
struct Neighborhood : Object<E> {
 protected:
  Neighborhood() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_NEIGHBORHOOD_HPP

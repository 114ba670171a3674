// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_GENERALIZED_PIXEL_HPP
#define QEL_CORE_CONCEPT_GENERALIZED_PIXEL_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A handle on one element of an image; a model offers `ima()` and `val()`.
template <typename E>
struct Generalized_Pixel : Object<E> {
 protected:
  Generalized_Pixel() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_GENERALIZED_PIXEL_HPP

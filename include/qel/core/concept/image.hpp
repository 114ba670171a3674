// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_IMAGE_HPP
#define QEL_CORE_CONCEPT_IMAGE_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A function from the sites of a domain to values.
///
/// A model has the types `value`, `lvalue`, `rvalue`, `site`, `psite` and `domain_t`, and offers
/// `is_valid()`, `domain()`, `has(p)`, and `operator()(p)` in a const and a non-const form.
///
/// An algorithm that makes images also needs default construction, `init_(box, border)`, `border()`, and the type
/// functions `trait::ch_value` and `trait::concrete`. One that fills, copies or counts (`data::fill`, `duplicate`,
/// `histo`), and `morpho::tree::node_tree`, also needs the properties of `trait::image_` and one block of elements:
/// `buffer()`, `nelements()`, `element(i)`, `point_at_index(i)`. Twice the border lies between two rows of the domain.
template <typename E>
struct Image : Object<E> {
 protected:
  Image() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_IMAGE_HPP

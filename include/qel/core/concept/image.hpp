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
/// Algorithms that make images also need default construction, `init_(box, border)`, `border()`, and the type functions
/// `trait::ch_value` and `trait::concrete`. Those that fill, copy or count (`data::fill`, `duplicate`, `histo`) need
/// the properties of `trait::image_` and, since all images of the library lie in one block, `buffer()`, `nelements()`,
/// `element(i)` and `point_at_index(i)`; in the block a row of the domain follows the last after twice the border. So do
/// the nodes of a tree on their own (`morpho::tree::node_tree`).
template <typename E>
struct Image : Object<E> {
 protected:
  Image() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_IMAGE_HPP

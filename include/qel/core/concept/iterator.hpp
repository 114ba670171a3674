// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_ITERATOR_HPP
#define QEL_CORE_CONCEPT_ITERATOR_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// Something that steps over the elements of a range; the exact class gives `next_()`.
template <typename E>
struct Iterator : Object<E> {
  /// Steps to the following element. \pre the iterator is valid.
  void next() { internal::force_exact<E>(*this).next_(); }

 protected:
  Iterator() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_ITERATOR_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_COORD_IMPL_HPP
#define QEL_CORE_INTERNAL_COORD_IMPL_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

namespace internal {

/// Gives the class E, which keeps `n` coordinates of type C in `coord_`, `row()`, `col()` and access by number.
template <unsigned n, typename C, typename E>
struct mutable_coord_impl_;

template <typename C, typename E>
struct mutable_coord_impl_<2, C, E> {
  const C& row() const { return (*this)[0]; }
  C& row() { return (*this)[0]; }

  const C& col() const { return (*this)[1]; }
  C& col() { return (*this)[1]; }

  /// Coordinate number `i`: 0 is the row, 1 the column.
  const C& operator[](unsigned i) const { return force_exact<E>(*this).coord_[i]; }
  C& operator[](unsigned i) { return force_exact<E>(*this).coord_[i]; }

 protected:
  mutable_coord_impl_() = default;
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_COORD_IMPL_HPP

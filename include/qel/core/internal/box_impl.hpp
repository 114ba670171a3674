// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_BOX_IMPL_HPP
#define QEL_CORE_INTERNAL_BOX_IMPL_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

namespace internal {

/// Gives the box class E with `n` coordinates of type C the names of its corners' coordinates.
template <unsigned n, typename C, typename E>
struct box_impl_;

template <typename C, typename E>
struct box_impl_<2, C, E> {
  C pmin_row() const { return exact().pmin().row(); }
  C pmin_col() const { return exact().pmin().col(); }
  C pmax_row() const { return exact().pmax().row(); }
  C pmax_col() const { return exact().pmax().col(); }

 protected:
  box_impl_() = default;

 private:
  const E& exact() const { return force_exact<E>(*this); }
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_BOX_IMPL_HPP

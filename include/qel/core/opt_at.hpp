// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_OPT_AT_HPP
#define QEL_CORE_OPT_AT_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/point2d.hpp>

namespace qel {

/// Values by plain coordinates.
namespace opt {

/// The value at the site (row, col). \pre the image has the site.
template <typename I>
typename I::rvalue at(const Image<I>& ima, short row, short col) {
  return internal::force_exact<I>(ima)(point2d(row, col));
}

/// The same, writable. \pre the image has the site.
template <typename I>
typename I::lvalue at(Image<I>& ima, short row, short col) {
  return internal::force_exact<I>(ima)(point2d(row, col));
}

}  // namespace opt

}  // namespace qel

#endif  // QEL_CORE_OPT_AT_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_BORDER_GET_HPP
#define QEL_DATA_BORDER_GET_HPP

#include <qel/core/concept/image.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace border {

/// Border of an image, in sites on each side.
template <typename I>
unsigned get(const Image<I>& ima) {
  trace::entering("border::get");
  const unsigned bdr = internal::force_exact<I>(ima).border();
  trace::exiting("border::get");
  return bdr;
}

}  // namespace border

}  // namespace qel

#endif  // QEL_DATA_BORDER_GET_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_GEOM_MAX_COL_HPP
#define QEL_DATA_GEOM_MAX_COL_HPP

#include <qel/core/concept/image.hpp>
#include <qel/data/geom/bbox.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace geom {

/// The last column of an image's domain.
template <typename I>
short max_col(const Image<I>& ima) {
  trace::entering("qel::geom::max_col");
  const short col = geom::bbox(ima).pmax_col();
  trace::exiting("qel::geom::max_col");
  return col;
}

}  // namespace geom

}  // namespace qel

#endif  // QEL_DATA_GEOM_MAX_COL_HPP

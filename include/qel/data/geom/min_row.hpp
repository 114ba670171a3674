// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_GEOM_MIN_ROW_HPP
#define QEL_DATA_GEOM_MIN_ROW_HPP

#include <qel/core/concept/image.hpp>
#include <qel/data/geom/bbox.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace geom {

/// The first row of an image's domain.
template <typename I>
short min_row(const Image<I>& ima) {
  trace::entering("qel::geom::min_row");
  const short row = geom::bbox(ima).pmin_row();
  trace::exiting("qel::geom::min_row");
  return row;
}

}  // namespace geom

}  // namespace qel

#endif  // QEL_DATA_GEOM_MIN_ROW_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONVERT_FROM_TO_HPP
#define QEL_CORE_CONVERT_FROM_TO_HPP

#include <qel/core/dpoint2d.hpp>
#include <qel/core/window2d.hpp>

namespace qel {

template <typename W>
class neighb;

/// Conversions from one type to another.
namespace convert {

/// Overloads by source and target.
namespace over_load {

/// Makes `win` the window of a 3 x 3 table, row by row: true entries are displacements, the centre the null one.
template <unsigned n>
void from_to_(const bool (&values)[n], window2d& win) {
  static_assert(n == 9, "from_to_: a table of 3 x 3 values is needed");
  win.clear();
  unsigned k = 0;
  for (int row = -1; row <= 1; ++row)
    for (int col = -1; col <= 1; ++col)
      if (values[k++]) win.insert(dpoint2d(row, col));
}

/// The same for the window of a neighbourhood.
template <unsigned n, typename W>
void from_to_(const bool (&values)[n], neighb<W>& nbh) {
  from_to_<n>(values, nbh.win());
}

}  // namespace over_load

}  // namespace convert

}  // namespace qel

#endif  // QEL_CORE_CONVERT_FROM_TO_HPP

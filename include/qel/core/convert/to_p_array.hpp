// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONVERT_TO_P_ARRAY_HPP
#define QEL_CORE_CONVERT_TO_P_ARRAY_HPP

#include <qel/core/box2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/core/site_set/p_array.hpp>

namespace qel {

namespace convert {

/// All sites of the box `s` in raster order, as an array. Cost: one pass.
///
/// The walk ignores validity: the array of an invalid box may have sites. The array grows as it is filled, because the
/// number of sites wraps where the columns are the wrong way round.
///
/// \pre    the last row of `s` is not 32767: see `box_fwd_piter_`.
/// \throws std::bad_alloc
inline p_array2d to_p_array(const box2d& s) {
  p_array2d result;
  box2d::fwd_piter p(s);
  for (p.start(); p.is_valid(); p.next()) result.insert(p);
  return result;
}

}  // namespace convert

}  // namespace qel

#endif  // QEL_CORE_CONVERT_TO_P_ARRAY_HPP

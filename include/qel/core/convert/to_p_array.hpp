// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONVERT_TO_P_ARRAY_HPP
#define QEL_CORE_CONVERT_TO_P_ARRAY_HPP

#include <qel/core/box2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/core/site_set/p_array.hpp>

namespace qel {

namespace convert {

/// All sites of the box `s` in raster order, as an array.
///
/// The walk takes no notice of the box's validity, so the array of an invalid box is not empty. Nor does it ask for
/// the number of sites, which wraps where the columns are the wrong way round: the array grows as it is filled.
/// Cost: one pass.
///
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

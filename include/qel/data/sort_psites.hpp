// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_SORT_PSITES_HPP
#define QEL_DATA_SORT_PSITES_HPP

// All sites of an image in the order of their values: the sweep order that decides which component tree comes out.
//
// The plain form is `comparison_sorted_psites`, which compares (value, row, column). The fast forms count: a counting
// sort for 8 bits, a radix sort for wider integers. The tests `sort_psites.equals_a_stable_sort_of_the_raster_order`
// and `sort_psites.looks_at_every_bit` hold both equal to a stable sort.
//
// Ties: increasing arrays are in raster order. So is the decreasing array of an 8-bit image; that of a wider one is in
// reverse raster order. Ties decide which site of a node is its canonical site and the order of float sums, so they are
// part of the results that users get.

#include <qel/core/concept/image.hpp>
#include <qel/core/convert/to_p_array.hpp>
#include <qel/core/internal/large_pages.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/core/value_set.hpp>
#include <qel/data/geom/nsites.hpp>
#include <qel/data/sort/histo.hpp>
#include <qel/data/sort/radix_sort.hpp>
#include <qel/data/sort/value_psite_order.hpp>

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

namespace qel {

namespace data {

namespace impl {

/// Puts each site at the place that `loc` tells for its value. Sites of one value stay in raster order.
template <typename I>
p_array2d place_psites_(const I& ima, std::vector<unsigned> loc) {
  const auto& vset = value::set<typename I::value>::the();
  std::vector<point2d> vec;
  qel::internal::resize_large(vec, geom::nsites(ima));
  box2d::fwd_piter p(ima.domain());
  for (p.start(); p.is_valid(); p.next()) vec[loc[vset.index_of(ima(p))]++] = p;
  return p_array2d(std::move(vec));
}

/// Counting sort, for values few enough to count. Cost: two passes, no comparison.
template <typename I>
p_array2d sort_psites_increasing_(trait::image::quant::low, const Image<I>& ima) {
  const auto h = histo::compute(ima);
  std::vector<unsigned> loc(h.vset().nvalues());
  for (unsigned i = 1; i < loc.size(); ++i) loc[i] = loc[i - 1] + h[i - 1];
  return place_psites_(qel::internal::force_exact<I>(ima), std::move(loc));
}

/// As above: only the table of places tells the direction.
template <typename I>
p_array2d sort_psites_decreasing_(trait::image::quant::low, const Image<I>& ima) {
  const auto h = histo::compute(ima);
  std::vector<unsigned> loc(h.vset().nvalues());
  for (unsigned i = static_cast<unsigned>(loc.size()) - 1; i > 0; --i) loc[i - 1] = loc[i] + h[i];
  return place_psites_(qel::internal::force_exact<I>(ima), std::move(loc));
}

/// A comparison sort by a strict total order, for any value type. Cost: n log n comparisons.
template <typename I, typename Order>
p_array2d comparison_sorted_psites(const I& ima, Order order) {
  p_array2d s = convert::to_p_array(ima.domain());
  std::sort(s.vect_.begin(), s.vect_.end(), order);
  return s;
}

/// All other values: a radix sort of integers, a comparison sort of the rest.
template <typename I>
p_array2d sort_psites_increasing_(trait::image::quant::high, const Image<I>& ima) {
  const I& exact_ima = qel::internal::force_exact<I>(ima);
  using value_t = typename I::value;
  if constexpr (std::is_integral_v<value_t> && !std::is_same_v<value_t, bool>)
    return radix_sorted_psites(exact_ima);
  else
    return comparison_sorted_psites(exact_ima, value_psite_less_<I>(exact_ima));
}

/// The decreasing order is the exact mirror of the increasing one.
template <typename I>
p_array2d sort_psites_decreasing_(trait::image::quant::high, const Image<I>& ima) {
  p_array2d s = sort_psites_increasing_(trait::image::quant::high(), ima);
  std::reverse(s.vect_.begin(), s.vect_.end());
  return s;
}

}  // namespace impl

/// The sites of the domain by ascending value: the sweep order of a max-tree. Equal values stay in raster order.
///
/// Cost: two passes for 8-bit values, two to eight for wider integers, n log n comparisons for `bool` and
/// floating point.
///
/// \pre    the domain has sites, its last row is not 32767 (see `box_fwd_piter_`), and no value is NaN.
/// \throws std::bad_alloc
template <typename I>
p_array2d sort_psites_increasing(const Image<I>& ima) {
  return impl::sort_psites_increasing_(typename trait::image_<I>::quant(), ima);
}

/// The sites of the domain by descending value: the sweep order of a min-tree. Equal values are in raster order if they
/// have 8 bits, in reverse raster order if they are wider.
///
/// Cost: that of `sort_psites_increasing`, and one pass to turn round what is no 8-bit integer.
///
/// \pre    as for `sort_psites_increasing`.
/// \throws std::bad_alloc
template <typename I>
p_array2d sort_psites_decreasing(const Image<I>& ima) {
  return impl::sort_psites_decreasing_(typename trait::image_<I>::quant(), ima);
}

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_SORT_PSITES_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_SWEEP_ORDER_HPP
#define QEL_MORPHO_TREE_SWEEP_SWEEP_ORDER_HPP

#include <qel/core/util/ord.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The order of a sorted site array: the direction of the values, and of the sites of one value.
struct sweep_order {
  bool increasing = true;   ///< values ascend: the tree is a max-tree
  bool raster_ties = true;  ///< sites of one value are in raster order, not against it
};

/// Reads the order off the array. \pre `s` is sorted by value, ties by position, each in either direction.
///
/// Cost: up to the first two neighbours of one value; at worst one pass over an image of all different values.
template <typename I, typename S>
sweep_order order_of(const I& f, const S& s) {
  sweep_order order;
  const unsigned n = s.nsites();
  order.increasing = !(f(s[n - 1]) < f(s[0]));
  for (unsigned i = 1; i < n; ++i)
    if (f(s[i - 1]) == f(s[i])) {
      order.raster_ties = util::ord_strict(s[i - 1], s[i]);
      break;
    }
  return order;
}

/// What a loop over the sites of `s` reads: a site array itself.
template <typename S>
const S& stored_sites(const S& s) {
  return s;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_SWEEP_ORDER_HPP

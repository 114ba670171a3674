// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_SORT_VALUE_PSITE_ORDER_HPP
#define QEL_DATA_SORT_VALUE_PSITE_ORDER_HPP

#include <qel/core/point2d.hpp>
#include <qel/core/util/ord.hpp>

namespace qel {

namespace data {

namespace impl {

/// Orders sites by (value, row, column) ascending. The image must outlive it.
///
/// A strict total order (without NaN): the sorted array is unique, whatever the sort.
template <typename I>
struct value_psite_less_ {
  explicit value_psite_less_(const I& ima) : ima_(ima) {}

  bool operator()(const point2d& lhs, const point2d& rhs) const {
    return util::ord_strict(ima_(lhs), ima_(rhs)) || (ima_(lhs) == ima_(rhs) && util::ord_strict(lhs, rhs));
  }

  const I& ima_;
};

/// The exact mirror of `value_psite_less_`: (value, row, column) descending.
template <typename I>
struct value_psite_greater_ {
  explicit value_psite_greater_(const I& ima) : ima_(ima) {}

  bool operator()(const point2d& lhs, const point2d& rhs) const {
    return util::ord_strict(ima_(rhs), ima_(lhs)) || (ima_(lhs) == ima_(rhs) && util::ord_strict(rhs, lhs));
  }

  const I& ima_;
};

}  // namespace impl

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_SORT_VALUE_PSITE_ORDER_HPP

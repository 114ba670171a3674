// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_FILL_WITH_VALUE_HPP
#define QEL_DATA_FILL_FILL_WITH_VALUE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/fill/memset.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace data {

namespace impl {

template <typename I>
void fill_with_value_one_block(Image<I>& ima, const typename I::value& value) {
  trace::entering("data::impl::fill_with_value_one_block");
  I& exact_ima = qel::internal::force_exact<I>(ima);
  const typename I::value copy = value;  // `value` may be an element of the image itself
  data::memset_(exact_ima, exact_ima.point_at_index(0), copy, exact_ima.nelements());
  trace::exiting("data::impl::fill_with_value_one_block");
}

}  // namespace impl

namespace internal {

template <typename I>
void fill_with_value_dispatch(trait::image::value_access::direct, Image<I>& ima, const typename I::value& value) {
  impl::fill_with_value_one_block(ima, value);
}

template <typename I>
void fill_with_value_dispatch(trait::image::value_storage::one_block, trait::image::vw_io::any, Image<I>& ima,
                              const typename I::value& value) {
  fill_with_value_dispatch(typename trait::image_<I>::value_access(), ima, value);
}

template <typename I>
void fill_with_value_dispatch(Image<I>& ima, const typename I::value& value) {
  using properties = trait::image_<I>;
  fill_with_value_dispatch(typename properties::value_storage(), typename properties::vw_io(), ima, value);
}

}  // namespace internal

/// Sets every element of `ima`, border included, to `value`.
template <typename I>
void fill_with_value(Image<I>& ima, const typename I::value& value) {
  trace::entering("data::fill_with_value");
  internal::fill_with_value_dispatch(ima, value);
  trace::exiting("data::fill_with_value");
}

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_FILL_FILL_WITH_VALUE_HPP

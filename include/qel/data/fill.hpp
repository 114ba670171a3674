// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_HPP
#define QEL_DATA_FILL_HPP

#include <qel/core/concept/image.hpp>
#include <qel/data/fill_with_image.hpp>
#include <qel/data/fill_with_value.hpp>
#include <qel/trace/trace.hpp>

#include <type_traits>

namespace qel {

/// Operations on all values of an image: filling, copying, sorting.
namespace data {

namespace internal {

template <typename I>
void fill_dispatch_overload(I& ima, const typename I::value& value) {
  data::fill_with_value(ima, value);
}

template <typename I, typename J>
void fill_dispatch_overload(I& ima, const Image<J>& data) {
  data::fill_with_image(ima, data);
}

template <typename I, typename D>
std::enable_if_t<!std::is_base_of_v<Image<D>, D>> fill_dispatch(Image<I>& ima, const D& d) {
  fill_dispatch_overload(qel::internal::force_exact<I>(ima), static_cast<const typename I::value&>(d));
}

template <typename I, typename J>
void fill_dispatch(Image<I>& ima, const Image<J>& data) {
  fill_dispatch_overload(qel::internal::force_exact<I>(ima), data);
}

}  // namespace internal

/// Writes a whole image: with one value (border included), or with the values of another image
/// (`fill_with_image`).
///
/// Cost: one pass; nothing is allocated.
///
/// \param ima the image to write.
/// \param d   a value, converted to the value type of `ima`, or an image with the domain of `ima`.
template <typename I, typename D>
void fill(Image<I>& ima, const D& d) {
  trace::entering("data::fill");
  internal::fill_dispatch(ima, d);
  trace::exiting("data::fill");
}

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_FILL_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_HPP
#define QEL_DATA_FILL_HPP

// Writing whole images: one value everywhere, or the values of another image. The plain form takes the domain element
// by element (`fill_with_image_fast`). Elements of one size go faster, in rows or whole blocks. The test
// `fill.an_image_or_a_value` holds all of them to the value by the definition, site by site.

#include <qel/core/concept/image.hpp>
#include <qel/data/fill/fill_with_image.hpp>
#include <qel/data/fill/fill_with_value.hpp>
#include <qel/trace/trace.hpp>

#include <type_traits>

namespace qel {

/// Operations on all values of an image: filling, copying, sorting.
namespace data {

namespace internal {

/// Chosen for images, and for classes that derive from an image class.
template <typename J>
std::true_type is_image(const Image<J>&);
std::false_type is_image(...);

template <typename I>
void fill_dispatch_overload(I& ima, const typename I::value& value) {
  data::fill_with_value(ima, value);
}

template <typename I, typename J>
void fill_dispatch_overload(I& ima, const Image<J>& data) {
  data::fill_with_image(ima, data);
}

template <typename I, typename D>
void fill_dispatch(Image<I>& ima, const D& d) {
  I& exact_ima = qel::internal::force_exact<I>(ima);
  if constexpr (decltype(is_image(d))::value)
    fill_dispatch_overload(exact_ima, d);
  else
    fill_dispatch_overload(exact_ima, static_cast<const typename I::value&>(d));
}

}  // namespace internal

/// Writes a whole image: with one value (border included), or with the values of another image (`fill_with_image`).
///
/// Cost: one pass; no memory that grows with the image.
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

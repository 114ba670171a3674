// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_FILL_WITH_IMAGE_HPP
#define QEL_DATA_FILL_FILL_WITH_IMAGE_HPP

// Copying the values of one image into another, by the cheapest of three paths.

#include <qel/core/concept/image.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/data/border_get.hpp>
#include <qel/data/fill/fwd_pixter2d.hpp>
#include <qel/data/fill/pixel.hpp>
#include <qel/trace/trace.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

namespace qel {

namespace data {

namespace impl {

/// Assigns `n` consecutive elements. Elements of one plain type are copied as bytes: those of a border may be unset,
/// and to read them as values is undefined.
template <typename T, typename U>
void copy_run(T* dest, const U* src, std::size_t n) {
  if constexpr (std::is_same_v<T, U> && std::is_trivially_copyable_v<T>) {
    if (n != 0) std::memmove(static_cast<void*>(dest), src, n * sizeof(T));
  } else {
    std::copy_n(src, n, dest);
  }
}

/// Whole blocks at once, border included. \pre same domain and border.
template <typename I, typename J>
void fill_with_image_fastest(Image<I>& ima, const Image<J>& data) {
  trace::entering("data::impl::fill_with_image_fastest");
  I& dest = qel::internal::force_exact<I>(ima);
  const J& src = qel::internal::force_exact<J>(data);
  copy_run(dest.buffer(), src.buffer(), dest.nelements());
  trace::exiting("data::impl::fill_with_image_fastest");
}

/// The domain, row by row. \pre `data` has the domain of `ima`.
template <typename I, typename J>
void fill_with_image_lines(Image<I>& ima, const Image<J>& data) {
  trace::entering("data::impl::fill_with_image_lines");
  I& dest = qel::internal::force_exact<I>(ima);
  const J& src = qel::internal::force_exact<J>(data);
  box_runstart_piter<typename I::site> p(dest.domain());
  for (p.start(); p.is_valid(); p.next())
    copy_run(pixel<I>(dest, p).address_(), pixel<const J>(src, p).address_(), dest.domain().len(1));
  trace::exiting("data::impl::fill_with_image_lines");
}

/// The domain, element by element, each converted. \pre `data` has the domain of `ima`.
template <typename I, typename J>
void fill_with_image_fast(Image<I>& ima, const Image<J>& data) {
  trace::entering("data::impl::fill_with_image_fast");
  fwd_pixter2d<const J> src(qel::internal::force_exact<J>(data));
  fwd_pixter2d<I> dest(qel::internal::force_exact<I>(ima));
  src.start();
  for (dest.start(); dest.is_valid(); src.next(), dest.next())
    // NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c): a grey level, no character
    dest.val() = static_cast<typename I::value>(src.val());
  trace::exiting("data::impl::fill_with_image_fast");
}

}  // namespace impl

namespace internal {

/// Equal border and domain mean equal blocks; any other pair of images shares rows only.
template <typename I, typename J>
void fill_with_image_(Image<I>& ima, const Image<J>& data) {
  const bool same_border = border::get(ima) == border::get(data);
  if (same_border && qel::internal::force_exact<I>(ima).domain() == qel::internal::force_exact<J>(data).domain())
    impl::fill_with_image_fastest(ima, data);
  else
    impl::fill_with_image_lines(ima, data);
}

}  // namespace internal

/// Gives `ima` the values of `data`, converted to its value type.
///
/// With equal border and domain, and elements of one size, the border is copied too; otherwise it keeps its values.
///
/// \pre `data` has the domain of `ima`; without sites, it has its border and element size, too.
template <typename I, typename J>
void fill_with_image(Image<I>& ima, const Image<J>& data) {
  trace::entering("data::fill_with_image");
  // Elements of one size are assigned in runs, others one by one.
  if constexpr (sizeof(typename I::value) == sizeof(typename J::value))
    internal::fill_with_image_(ima, data);
  else
    impl::fill_with_image_fast(ima, data);
  trace::exiting("data::fill_with_image");
}

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_FILL_FILL_WITH_IMAGE_HPP

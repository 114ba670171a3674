// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_PIXEL_HPP
#define QEL_DATA_FILL_PIXEL_HPP

#include <qel/core/concept/generalized_pixel.hpp>
#include <qel/core/point2d.hpp>

#include <type_traits>

namespace qel {

namespace internal {

/// The base of the pixel classes: an image and the address of one of its elements. I is constant for reading only.
template <typename I, typename E>
class pixel_impl_ {
 public:
  using image = I;
  using element = std::conditional_t<std::is_const_v<I>, const typename I::value, typename I::value>;

  I& ima() const { return image_; }

  element& val() const { return *value_ptr_; }
  element* address_() const { return value_ptr_; }

 protected:
  pixel_impl_(I& ima, element* value_ptr) : image_(ima), value_ptr_(value_ptr) {}

  I& image_;
  element* value_ptr_;
};

}  // namespace internal

/// A handle on the element of an image at one site. It points into the image and must not outlive it.
///
/// `val()` reads and writes the element, `ima()` is the image; for a constant type I the element is constant too.
template <typename I>
class pixel : public Generalized_Pixel<pixel<I>>, public internal::pixel_impl_<I, pixel<I>> {
 public:
  /// \pre the image has `p`; the corner of an empty block has an address too.
  pixel(I& ima, const point2d& p) : internal::pixel_impl_<I, pixel>(ima, &ima(p)) {}
};

}  // namespace qel

#endif  // QEL_DATA_FILL_PIXEL_HPP

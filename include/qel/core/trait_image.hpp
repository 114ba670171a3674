// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_TRAIT_IMAGE_HPP
#define QEL_CORE_TRAIT_IMAGE_HPP

// The properties of image types, by which algorithms choose their form, and the functions from image type to image
// type. All are settled at compile time.

#include <type_traits>

namespace qel {

/// Properties of types and functions from type to type, settled at compile time.
namespace trait {

/// What algorithms ask of an image type.
namespace image {

/// How many values there are to tell apart: few enough to count each (8 bits), or not.
namespace quant {
/// The 8-bit integers.
struct low {};
/// All other values.
struct high {};
}  // namespace quant

/// Where the values are.
namespace value_storage {
/// In one block of memory, row by row, border included.
struct one_block {};
}  // namespace value_storage

/// How a value is reached.
namespace value_access {
/// By its address.
struct direct {};
}  // namespace value_access

/// Which values can be written through the image.
namespace vw_io {
/// Every value of the value type.
struct any {};
}  // namespace vw_io

}  // namespace image

/// The properties of the image type I: `quant`, `value_storage`, `value_access`, `vw_io`.
template <typename I>
struct image_;

/// A constant image has the properties of the type without `const`.
template <typename I>
struct image_<const I> : image_<I> {};

/// `ret` is the image type like I with the value type V.
template <typename I, typename V>
struct ch_value;

/// `ret` is the writable image type with storage of its own that can stand for I.
template <typename I>
struct concrete;

}  // namespace trait

namespace internal {

/// Whether T is an integer type with so few values that each can have a counter.
template <typename T>
inline constexpr bool has_low_quant = std::is_integral_v<T> && sizeof(T) == 1 &&
                                      !std::is_same_v<std::remove_cv_t<T>, bool>;

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_TRAIT_IMAGE_HPP

// SPDX-License-Identifier: MIT
#ifndef ENTRY_IMAGE_CLASS_HPP
#define ENTRY_IMAGE_CLASS_HPP

// Which host class stands for which value type: one list, read in both directions.

#include "entry/host.hpp"

#include <climits>
#include <cstddef>
#include <cstdint>

namespace entry {
namespace internal {

/// The width of an element of a numeric class. The integer classes, from 8 on, come in pairs of one width.
constexpr std::size_t bits_of(mxClassID id) {
  switch (id) {
    case mxLOGICAL_CLASS:
      return 8;
    case mxDOUBLE_CLASS:
      return 64;
    case mxSINGLE_CLASS:
      return 32;
    default:
      return std::size_t{8} << (id - mxINT8_CLASS) / 2;
  }
}

}  // namespace internal

/// Host arrays of class `id` hold elements of type T.
template <typename T, mxClassID id>
struct host_class {
  static_assert(sizeof(T) * CHAR_BIT == internal::bits_of(id), "a type of another width than its host class");
};

template <typename... Classes>
struct class_list : Classes... {};

/// The classes that an image can have.
using image_classes = class_list<host_class<signed char, mxINT8_CLASS>, host_class<unsigned char, mxUINT8_CLASS>,
                                 host_class<short, mxINT16_CLASS>, host_class<unsigned short, mxUINT16_CLASS>,
                                 host_class<int, mxINT32_CLASS>, host_class<unsigned int, mxUINT32_CLASS>,
                                 host_class<std::int64_t, mxINT64_CLASS>, host_class<std::uint64_t, mxUINT64_CLASS>>;

/// All classes that have a value type.
using all_classes = class_list<image_classes, host_class<bool, mxLOGICAL_CLASS>, host_class<float, mxSINGLE_CLASS>,
                               host_class<double, mxDOUBLE_CLASS>>;

namespace internal {

// Called with T alone: the class is that of the one base of the list that names T.
template <typename T, mxClassID id>
constexpr mxClassID class_of(host_class<T, id>) {
  return id;
}

template <typename Function, typename... T, mxClassID... id>
bool call_with_value_type(mxClassID wanted, Function function, class_list<host_class<T, id>...>) {
  return ((wanted == id && (function(T{}), true)) || ...);
}

}  // namespace internal

/// Calls `function` with a zero of the value type of image class `id`; false if no image has that class.
template <typename Function>
bool call_with_value_type(mxClassID id, Function function) {
  return internal::call_with_value_type(id, function, image_classes{});
}

}  // namespace entry

/// The host class of arrays whose elements are of type T; the value is ignored.
template <typename T>
constexpr mxClassID define_image_type(T) {
  return entry::internal::class_of<T>(entry::all_classes{});
}

#endif  // ENTRY_IMAGE_CLASS_HPP

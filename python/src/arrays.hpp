// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_ARRAYS_HPP
#define PYTHON_SRC_ARRAYS_HPP

// Between NumPy's arrays and the typed computations.

#include "strided_image.hpp"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <qel/core/internal/large_pages.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace python {

/// Calls `call(zero)` with a zero of the value type of an integer dtype, of any byte order.
template <typename Call>
auto with_value_type(const pybind11::dtype& type, Call call) {
  const bool is_signed = type.kind() == 'i';
  switch (type.itemsize()) {
    case 1:
      return is_signed ? call(std::int8_t{}) : call(std::uint8_t{});
    case 2:
      return is_signed ? call(std::int16_t{}) : call(std::uint16_t{});
    case 4:
      return is_signed ? call(std::int32_t{}) : call(std::uint32_t{});
    default:
      return is_signed ? call(std::int64_t{}) : call(std::uint64_t{});
  }
}

/// The matrix of the last two dimensions of `array`, from `first` on.
inline strided_image matrix_of(const pybind11::array& array, const void* first) {
  const pybind11::ssize_t rows = array.ndim() - 2;
  const bool swapped = array.dtype().attr("isnative").cast<bool>() == false;
  return {static_cast<const char*>(first), array.shape(rows),
          array.shape(rows + 1),           array.strides(rows),
          array.strides(rows + 1),         swapped};
}

/// \pre Two dimensions.
inline strided_image image_of(const pybind11::array& image) { return matrix_of(image, image.data()); }

/// \pre Three dimensions; the first one has `k`.
inline strided_image band_of(const pybind11::array& bands, pybind11::ssize_t k) {
  return matrix_of(bands, static_cast<const char*>(bands.data()) + k * bands.strides(0));
}

/// Room for an array, not written yet: threads that are left behind may own it. \throws std::bad_alloc
template <typename T>
std::shared_ptr<T[]> elements(const std::vector<std::size_t>& shape) {
  std::size_t count = 1;
  for (const std::size_t length : shape) {
    if (count > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T) / length) throw std::bad_alloc();
    count *= length;
  }
  std::shared_ptr<T[]> room(new T[count]);
  qel::internal::advise_large_pages(room.get(), count * sizeof(T));
  return room;
}

/// The array of `shape` on `room`, which lives as long.
template <typename T>
pybind11::array to_array(const std::shared_ptr<T[]>& room, const std::vector<std::size_t>& shape) {
  using owner = std::shared_ptr<T[]>;
  const pybind11::capsule base(new owner(room), [](void* p) { delete static_cast<owner*>(p); });
  return pybind11::array_t<T>(shape, room.get(), base);
}

}  // namespace python

#endif  // PYTHON_SRC_ARRAYS_HPP

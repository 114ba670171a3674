// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_STRIDED_IMAGE_HPP
#define PYTHON_SRC_STRIDED_IMAGE_HPP

// From a NumPy array, of any strides and byte order, to an image of the library in one copy.

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace python {

/// The memory of a two-dimensional array. Elements need not be aligned.
struct strided_image {
  const char* first;  ///< element (0, 0)
  std::int64_t rows;
  std::int64_t cols;
  std::int64_t row_stride;  ///< bytes from a row to the next; perhaps negative
  std::int64_t col_stride;  ///< bytes from a column to the next; perhaps negative
  bool swapped;             ///< bytes stand in the other order than the machine's
};

namespace internal {

template <typename T>
T element_at(const char* place, bool swapped) {
  char bytes[sizeof(T)];
  std::memcpy(bytes, place, sizeof(T));
  if (swapped) std::reverse(bytes, bytes + sizeof(T));
  T value;
  std::memcpy(&value, bytes, sizeof(T));
  return value;
}

}  // namespace internal

/// Calls `row_of(row)` for where each row goes, and writes the elements of `source` there. Column by column an array is
/// read by tiles that lie in the nearest caches: one long column after the other would miss them at each element.
template <typename T, typename RowOf>
void read_strided(const strided_image& source, RowOf row_of) {
  if (source.col_stride == sizeof(T) && !source.swapped) {
    for (std::int64_t row = 0; row < source.rows; ++row)
      std::memcpy(row_of(row), source.first + row * source.row_stride,
                  static_cast<std::size_t>(source.cols) * sizeof(T));
    return;
  }
  constexpr std::int64_t side = 64;
  for (std::int64_t top = 0; top < source.rows; top += side)
    for (std::int64_t left = 0; left < source.cols; left += side)
      for (std::int64_t row = top; row < std::min(top + side, source.rows); ++row) {
        T* const pixels = row_of(row);
        const char* const elements = source.first + row * source.row_stride;
        for (std::int64_t col = left; col < std::min(left + side, source.cols); ++col)
          pixels[col] = internal::element_at<T>(elements + col * source.col_stride, source.swapped);
      }
}

/// The image of an array. \pre It has 1 to 32765 rows and columns. \throws std::bad_alloc
template <typename T>
qel::image2d<T> to_image(const strided_image& source) {
  qel::image2d<T> image(static_cast<std::size_t>(source.rows), static_cast<std::size_t>(source.cols));
  read_strided<T>(source,
                  [&](std::int64_t row) { return &image(qel::point2d(qel::internal::narrowed<short>(row), 0)); });
  return image;
}

}  // namespace python

#endif  // PYTHON_SRC_STRIDED_IMAGE_HPP

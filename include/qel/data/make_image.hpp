// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_MAKE_IMAGE_HPP
#define QEL_DATA_MAKE_IMAGE_HPP

#include <qel/core/image2d.hpp>

#include <algorithm>
#include <cstddef>

namespace qel {

/// An image of `rows` x `cols` pixels with a copy of the values of an array, which stand without gaps, row by row.
///
///     const qel::image2d<unsigned char> image = qel::make_image(pixels.data(), 480, 640);
///
/// Cost: one pass.
/// \throws std::bad_array_new_length beyond 32765 rows or columns (see `greatest_length`); std::bad_alloc
template <typename T>
image2d<T> make_image(const T* first, std::size_t rows, std::size_t cols) {
  image2d<T> image(rows, cols);
  point2d begin = image.domain().pmin();
  for (std::size_t row = 0; row < rows; ++row, ++begin.row(), first += cols) std::copy_n(first, cols, &image(begin));
  return image;
}

}  // namespace qel

#endif  // QEL_DATA_MAKE_IMAGE_HPP

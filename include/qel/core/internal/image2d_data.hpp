// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_IMAGE2D_DATA_HPP
#define QEL_CORE_INTERNAL_IMAGE2D_DATA_HPP

// The record behind the handles of an `image2d`.
//
// A value is reached by two loads, `array_[row][col]` with absolute coordinates, negative ones in the border
// included: no subtraction for each access. That asks for a table pointer and row pointers that stand at
// coordinate 0 of their axis. A pointer may not leave its block, not even unread, so both blocks are made
// large enough to contain coordinate 0: an image whose padded box does (every image with a border that starts
// at (0, 0) does) pays nothing, and one far from the origin pays some unused elements before or behind its
// values. The alternatives lost: addresses kept as integers hide from the optimiser what points where, and an
// index needs a multiplication.
//
// One element more lies before the values, so that a walk can stand before the first one (`fwd_pixter2d`).

#include <qel/core/box2d.hpp>
#include <qel/core/dpoint2d.hpp>
#include <qel/core/internal/image_base.hpp>
#include <qel/core/internal/large_pages.hpp>
#include <qel/core/point2d.hpp>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace qel {

template <typename T>
class image2d;

namespace internal {

/// How many unused entries a block of `len` entries, the first of which is that of coordinate `first`, needs
/// before and behind them, so that the place of coordinate 0 is in the block (or one past it).
struct origin_padding {
  origin_padding(std::ptrdiff_t first, std::size_t len)
      : before(first > 0 ? static_cast<std::size_t>(first) : 0),
        behind(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, -first - static_cast<std::ptrdiff_t>(len)))) {}

  std::size_t before;
  std::size_t behind;
};

template <typename T>
struct data<image2d<T>> {
  /// \throws std::bad_alloc; nothing is left allocated then.
  data(const box2d& b, unsigned bdr) : b_(b), bdr_(bdr) {
    const dpoint2d thickness(bdr, bdr);
    vb_ = box2d(b.pmin() - thickness, b.pmax() + thickness);
    const std::size_t nvalues = before_values() + vb_.nsites() + columns().behind;
    std::unique_ptr<T[]> values(new T[nvalues]);
    if (std::is_trivially_default_constructible_v<T>) advise_large_pages(values.get(), nvalues * sizeof(T));
    std::unique_ptr<T*[]> table(new T*[rows().before + vb_.len(0) + rows().behind]);
    buffer_ = values.release() + before_values();
    array_ = table.release() - table_start();
    set_rows();
  }

  data(const data&) = delete;
  data& operator=(const data&) = delete;

  /// The values go first, then the table.
  ~data() {
    delete[](buffer_ - before_values());
    delete[](array_ + table_start());
  }

  T* buffer_;     ///< first value of the padded box; the values follow row by row
  T** array_;     ///< row table, standing at row 0; each entry stands at column 0 of its row
  box2d b_;       ///< the domain
  unsigned bdr_;  ///< border, in sites
  box2d vb_;      ///< the padded box: the domain grown by the border

 private:
  /// Whether the padded box has sites, so that rows can be laid out. A box that is valid by its rows alone
  /// has none.
  bool has_rows() const { return vb_.pmin_row() <= vb_.pmax_row() && vb_.pmin_col() <= vb_.pmax_col(); }

  origin_padding rows() const { return {has_rows() ? vb_.pmin_row() : 0, vb_.len(0)}; }
  origin_padding columns() const { return {has_rows() ? vb_.pmin_col() : 0, vb_.len(1)}; }

  std::size_t before_values() const { return columns().before + 1; }

  /// Where the block of the table starts, seen from `array_`.
  std::ptrdiff_t table_start() const { return has_rows() ? std::min<std::ptrdiff_t>(0, vb_.pmin_row()) : 0; }

  void set_rows() {
    if (!has_rows()) return;
    const std::size_t ncols = vb_.len(1);
    T* row = buffer_;
    for (int r = vb_.pmin_row(); r <= vb_.pmax_row(); ++r, row += ncols) array_[r] = row - vb_.pmin_col();
  }
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_IMAGE2D_DATA_HPP

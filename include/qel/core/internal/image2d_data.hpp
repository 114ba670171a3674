// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_IMAGE2D_DATA_HPP
#define QEL_CORE_INTERNAL_IMAGE2D_DATA_HPP

// The record behind the handles of an `image2d`.
//
// `array_[row][col]` takes absolute coordinates, negative ones in the border included: two loads, no subtraction. So
// the table and each row pointer stand at coordinate 0 of their axis. A pointer may not leave its block, not even
// unread, so both blocks contain coordinate 0. An image with a border that starts at (0, 0) pays nothing for it, one
// far from the origin some unused elements. Addresses kept as integers would hide from the optimiser what points where;
// an index would need a multiplication.
//
// One more element lies before the values, for a walk that stands before the first one (`fwd_pixter2d`). A box without
// sites gets one row of one unused element, so that its corner has an address.

#include <qel/core/box2d.hpp>
#include <qel/core/dpoint2d.hpp>
#include <qel/core/internal/image_base.hpp>
#include <qel/core/internal/large_pages.hpp>
#include <qel/core/point2d.hpp>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace qel {

template <typename T>
class image2d;

namespace internal {

/// The unused entries before and behind a block of `len` entries, the first of which is that of coordinate `first`:
/// with them the place of coordinate 0 is in the block, or one past it.
struct origin_padding {
  origin_padding(std::ptrdiff_t first, std::size_t len)
      : before(first > 0 ? static_cast<std::size_t>(first) : 0),
        behind(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, -first - static_cast<std::ptrdiff_t>(len)))) {}

  std::size_t before;
  std::size_t behind;
};

template <typename T>
struct data<image2d<T>> {
  /// \throws std::bad_alloc; std::bad_array_new_length if the padded box has its columns the wrong way round, or more
  ///         sites than 32 bits number: its rows would not lie in one block.
  data(const box2d& b, unsigned bdr) : b_(b), bdr_(bdr) {
    const dpoint2d thickness(bdr, bdr);
    vb_ = box2d(b.pmin() - thickness, b.pmax() + thickness);
    if (std::size_t{vb_.len(0)} * vb_.len(1) != vb_.nsites()) throw std::bad_array_new_length();

    const std::size_t nrows = std::max(vb_.len(0), 1u);
    const std::size_t nvalues = std::max(vb_.nsites(), 1u);
    const origin_padding rows(vb_.pmin_row(), nrows);
    const origin_padding columns(vb_.pmin_col(), vb_.len(1));
    const std::size_t before_values = columns.before + 1;
    const std::size_t block_size = before_values + nvalues + columns.behind;

    values_.reset(new T[block_size]);
    if (std::is_trivially_default_constructible_v<T>) advise_large_pages(values_.get(), block_size * sizeof(T));
    table_.reset(new T*[rows.before + nrows + rows.behind]);
    buffer_ = values_.get() + before_values;
    array_ = table_.get() + (static_cast<std::ptrdiff_t>(rows.before) - vb_.pmin_row());
    for (std::size_t k = 0; k < nrows; ++k) table_[rows.before + k] = buffer_ + k * vb_.len(1) - vb_.pmin_col();
  }

 private:
  // Released in reverse order: the values, then the table.
  std::unique_ptr<T*[]> table_;
  std::unique_ptr<T[]> values_;

 public:
  T* buffer_;     ///< first value of the padded box; the values follow row by row
  T** array_;     ///< row table, standing at row 0; each entry stands at column 0 of its row
  box2d b_;       ///< the domain
  unsigned bdr_;  ///< border, in sites
  box2d vb_;      ///< the padded box: the domain grown by the border
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_IMAGE2D_DATA_HPP

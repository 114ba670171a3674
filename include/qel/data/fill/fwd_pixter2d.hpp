// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_FWD_PIXTER2D_HPP
#define QEL_DATA_FILL_FWD_PIXTER2D_HPP

#include <qel/core/concept/iterator.hpp>
#include <qel/core/opt_at.hpp>
#include <qel/data/fill/pixel.hpp>
#include <qel/data/geom/max_col.hpp>
#include <qel/data/geom/min_row.hpp>

namespace qel {

namespace internal {

/// A forward walk over the elements of an image's domain, between two marks outside it.
template <typename I, typename E>
class forward_pixel_iterator_base_ : public Iterator<E>, public pixel_impl_<I, E> {
 public:
  using typename pixel_impl_<I, E>::element;

  void start() {
    this->value_ptr_ = before_first_ + 1;
    force_exact<E>(*this).start_();
  }

  bool is_valid() const { return this->value_ptr_ != past_last_; }

  void invalidate() { this->value_ptr_ = past_last_; }

 protected:
  /// The block of an image has an unused element before its values: `before_first_` is inside it at any border.
  explicit forward_pixel_iterator_base_(I& ima)
      : pixel_impl_<I, E>(ima, nullptr),
        before_first_(&ima(ima.domain().pmin()) - 1),
        past_last_(&ima(ima.domain().pmax()) + 1) {
    invalidate();
  }

  element* before_first_;
  element* past_last_;
};

}  // namespace internal

/// Visits the elements of an image's domain in raster order and never touches the border.
///
///     for (p.start(); p.is_valid(); p.next()) p.val() = ...;
///
/// Like a pixel it has `val()`, the element, and `ima()`. Cost of a step: an increment and a comparison; two at the end
/// of a row.
template <typename I>
class fwd_pixter2d : public internal::forward_pixel_iterator_base_<I, fwd_pixter2d<I>> {
  using base = internal::forward_pixel_iterator_base_<I, fwd_pixter2d<I>>;

 public:
  /// A walk over `ima`, invalid until `start()`. \pre the domain has sites; `ima` outlives the walk.
  explicit fwd_pixter2d(I& ima)
      : base(ima), border_gap_(2 * ima.border()), row_stride_(ima.domain().len(1) + border_gap_) {}
  explicit fwd_pixter2d(const I&&) = delete;

  void start_() {
    const short max_col = geom::max_col(this->image_);
    const short min_row = geom::min_row(this->image_);
    row_end_ = &opt::at(this->image_, min_row, max_col) + 1;
  }

  void next_() {
    ++this->value_ptr_;
    if (this->value_ptr_ == row_end_ && this->value_ptr_ != this->past_last_) {
      this->value_ptr_ += border_gap_;
      row_end_ += row_stride_;
    }
  }

 private:
  unsigned border_gap_;  ///< elements from the end of a domain row to the start of the next
  unsigned row_stride_;  ///< elements from one row start to the next
  typename base::element* row_end_ = nullptr;
};

}  // namespace qel

#endif  // QEL_DATA_FILL_FWD_PIXTER2D_HPP

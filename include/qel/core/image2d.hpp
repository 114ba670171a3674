// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_IMAGE2D_HPP
#define QEL_CORE_IMAGE2D_HPP

// The image of the library: one block of values on a box with a border, reached through a table of row pointers and
// shared by cheap handles. The plain form is any model of `Image`, reached site by site. The test
// `users_own.image_window_and_accumulator_give_what_the_librarys_do` takes an image with nothing else through sort,
// tree, attribute and rules, and holds its results equal to those of an `image2d`.

#include <qel/core/border.hpp>
#include <qel/core/box2d.hpp>
#include <qel/core/dpoint2d.hpp>
#include <qel/core/internal/image2d_data.hpp>
#include <qel/core/internal/image_base.hpp>
#include <qel/core/internal/metal.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/trait_image.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

namespace qel {

/// The most rows or columns of an image with first site (0, 0) and a border of `bdr` sites: 32765 for a border of 3.
///
/// Coordinates have 16 bits, and the border takes some. Without a border the last coordinate stays free, because a walk
/// over the box ends one row behind it.
constexpr std::size_t greatest_length(unsigned bdr) {
  constexpr std::size_t coordinates = std::size_t{std::numeric_limits<short>::max()} + 1;
  return coordinates - std::clamp<std::size_t>(bdr, 1, coordinates);
}

namespace internal {

/// \throws std::bad_array_new_length beyond `greatest_length(bdr)`: coordinates would wrap.
inline box2d box_from_origin(std::size_t rows, std::size_t cols, unsigned bdr) {
  if (std::max(rows, cols) > greatest_length(bdr)) throw std::bad_array_new_length();
  return {point2d(0, 0),
          point2d(narrowed<short>(static_cast<int>(rows) - 1), narrowed<short>(static_cast<int>(cols) - 1))};
}

}  // namespace internal

/// A two-dimensional image with values of type T.
///
/// An object is a handle: a copy shares the record with the values, `duplicate` makes a deep copy, and the last handle
/// frees the record. No argument is checked: a site has to lie in the padded box, the domain with its border.
///
/// Coordinates have 16 bits and the border counts: with the default border of 3, at most 32765 rows and columns.
///
/// All but `is_valid()`, which is false for an empty handle, ask for a valid image. As an Image it has the types
/// `value`, `lvalue`, `rvalue`, `site`, `psite` and `domain_t`. `values_space()` is the set of all values of T, and
/// `index_of_point(p)` the number of the element at `p` in the block.
template <typename T>
class image2d : public internal::image_base<T, box2d, image2d<T>>,
                public internal::check::image_fastest_<image2d<T>, metal::bool_<true>> {
  using base = internal::image_base<T, box2d, image2d<T>>;

 public:
  /// An empty handle; `init_` or an assignment gives it a record.
  image2d() = default;

  /// An image on the box `b` (rows x columns sites), with `bdr` sites of border on each side.
  ///
  /// Values of builtin and site type are not set.
  ///
  /// \throws std::bad_alloc also for a box that no block can hold: with its columns the wrong way round beyond the
  ///         border, or with 2^32 sites.
  explicit image2d(const box2d& b, unsigned bdr = border::thickness) { init_(b, bdr); }

  /// An image of `rows` x `cols` sites, the first of which is (0, 0), with `bdr` sites of border on each side.
  ///
  /// Values of builtin and site type are not set.
  /// \throws std::bad_array_new_length beyond `greatest_length(bdr)`, before anything is allocated; std::bad_alloc
  image2d(std::size_t rows, std::size_t cols, unsigned bdr = border::thickness)
      : image2d(internal::box_from_origin(rows, cols, bdr), bdr) {}

  /// Shares the record of `rhs`: no value is copied. \throws std::bad_alloc
  image2d(const image2d& rhs) = default;
  /// Lets go of its own record and shares that of `rhs`. \throws std::bad_alloc The handle keeps its record then.
  image2d& operator=(const image2d& rhs) = default;
  /// Lets go of the record; the last handle frees it.
  ~image2d() = default;

  /// Points this handle at a new record; other handles keep the old one.
  /// \throws std::bad_alloc The handle keeps its record then.
  void init_(const box2d& b, unsigned bdr) {
    auto record = std::make_unique<internal::data<image2d>>(b, bdr);
    this->data_ = record.get();
    static_cast<void>(record.release());  // the handle has it now
  }

  /// The sites that carry image data.
  const box2d& domain() const { return this->data_->b_; }

  /// Border, in sites on each side.
  unsigned border() const { return this->data_->bdr_; }

  /// Whether `p` lies in the padded box. True in the border too: for the domain alone ask `domain().has(p)`.
  bool has(const point2d& p) const { return this->data_->vb_.has(p); }

  /// The value at `p`: two loads, no arithmetic on the coordinates. \pre `has(p)`.
  const T& operator()(const point2d& p) const { return this->data_->array_[p.row()][p.col()]; }
  /// The same, writable. All handles on the record see the new value. \pre `has(p)`.
  T& operator()(const point2d& p) { return this->data_->array_[p.row()][p.col()]; }

  /// The first element of the block, at the top left corner of the padded box. The block is in row-major order.
  const T* buffer() const { return this->data_->buffer_; }
  /// The same, writable.
  T* buffer() { return this->data_->buffer_; }

  /// Size of the block in elements, border included.
  unsigned nelements() const { return this->data_->vb_.nsites(); }

  /// Element `i` of the block. \pre `i < nelements()`.
  const T& element(unsigned i) const { return this->data_->buffer_[i]; }
  /// The same, writable. \pre `i < nelements()`.
  T& element(unsigned i) { return this->data_->buffer_[i]; }

  /// Distance in the block, in elements, between two sites that differ by `dp`.
  int delta_index(const dpoint2d& dp) const {
    const unsigned ncols = this->data_->vb_.len(1);
    return static_cast<int>(static_cast<unsigned>(dp.row()) * ncols + static_cast<unsigned>(dp.col()));
  }

  /// The site of element `i` of the block; the top left corner if the block is empty.
  point2d point_at_index(unsigned i) const {
    const box2d& vb = this->data_->vb_;
    const unsigned ncols = vb.len(1);
    if (ncols == 0) return vb.pmin();
    return {internal::narrowed<short>(static_cast<unsigned>(vb.pmin_row()) + i / ncols),
            internal::narrowed<short>(static_cast<unsigned>(vb.pmin_col()) + i % ncols)};
  }
};

namespace trait {

/// The properties of `image2d<T>`.
template <typename T>
struct image_<image2d<T>> {
  /// Low for 8-bit integers; high for all else, `bool` too.
  using quant = std::conditional_t<internal::has_low_quant<T>, image::quant::low, image::quant::high>;
  /// A whole image can be filled or copied as one block.
  using value_storage = image::value_storage::one_block;
  /// A value is an object in memory.
  using value_access = image::value_access::direct;
  /// Every value of T can be written.
  using vw_io = image::vw_io::any;
};

/// With other values an `image2d` is an `image2d` again.
template <typename T, typename V>
struct ch_value<image2d<T>, V> {
  /// The image type with values of type V.
  using ret = image2d<V>;
};

/// An `image2d` has its own storage, so it stands for itself.
template <typename T>
struct concrete<image2d<T>> {
  /// The type itself.
  using ret = image2d<T>;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_CORE_IMAGE2D_HPP

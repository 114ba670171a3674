// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_PROFILE_PLANES_HPP
#define QEL_MORPHO_PROFILE_PLANES_HPP

// Sinks for `attribute_profile`. entry/profile.hpp has one that writes columns, as MATLAB and Octave want them.

#include <qel/core/point2d.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qel {

namespace morpho {

/// Keeps the planes as images of type I, in `images`.
template <typename I>
struct plane_images {
  /// The planes so far, in order.
  std::vector<I> images = {};

  /// Planes of a tree. \throws std::bad_alloc
  template <typename T, typename V>
  void filtered(const T& nodes, const tree::plane_values<V>& values) {
    const auto& number = nodes.table().number;
    for (std::size_t k = 0; k < values.size(); ++k) {
      I plane;
      initialize(plane, number);
      typename I::domain_t::fwd_piter p(number.domain());
      for (p.start(); p.is_valid(); p.next()) plane(p) = values.of(number(p))[k];
      images.push_back(plane);
    }
  }

  /// The plane of the image itself. \throws std::bad_alloc
  void input(const I& image) { images.push_back(image); }
};

/// Writes the planes one after the other, each in raster order and without gaps, as elements of type V.
template <typename V>
class raster_planes {
 public:
  /// \param position where the first plane begins; there is room for all.
  explicit raster_planes(V* position) : position_(position) {}

  /// The end of the last plane so far.
  V* position() const { return position_; }

  /// Planes of a tree, of an image whose rows are each in one block.
  template <typename T, typename U>
  void filtered(const T& nodes, const tree::plane_values<U>& values) {
    const auto& number = nodes.table().number;
    const std::size_t cols = number.domain().len(1);
    const std::size_t nsites = number.domain().nsites();
    point2d row = number.domain().pmin();
    for (std::size_t first = 0; first < nsites; first += cols, ++row.row())
      values.spread(&number(row), cols, position_ + first, nsites);
    position_ += values.size() * nsites;
  }

  /// The plane of the image itself. Its rows are each in one block.
  template <typename I>
  void input(const I& image) {
    const std::size_t cols = image.domain().len(1);
    point2d row = image.domain().pmin();
    for (unsigned left = image.domain().len(0); left > 0; --left, ++row.row())
      position_ = std::transform(&image(row), &image(row) + cols, position_,
                                 [](const typename I::value& v) { return static_cast<V>(v); });
  }

 private:
  V* position_;
};

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_PROFILE_PLANES_HPP

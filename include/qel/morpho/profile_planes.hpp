// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_PROFILE_PLANES_HPP
#define QEL_MORPHO_PROFILE_PLANES_HPP

// Sinks for `attribute_profile`. entry/profile.hpp has one that writes columns, as MATLAB and Octave want them.

#include <qel/morpho/tree/spread_node_values.hpp>

#include <vector>

namespace qel {

namespace morpho {

/// Keeps the planes as images of type I, in `images`.
template <typename I>
struct plane_images {
  /// The planes so far, in order.
  std::vector<I> images = {};

  /// Planes of a tree. \throws std::bad_alloc
  template <typename T, typename F>
  void filtered(const T& nodes, const std::vector<F>& values) {
    for (const F& plane : values) images.push_back(tree::spread_node_values(nodes.table(), plane));
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

  /// Planes of a tree.
  template <typename T, typename F>
  void filtered(const T& nodes, const std::vector<F>& values) {
    for (const F& plane : values) {
      tree::spread_node_values(nodes.table(), plane, position_);
      position_ += nodes.table().number.domain().nsites();
    }
  }

  /// The plane of the image itself.
  template <typename I>
  void input(const I& image) {
    typename I::domain_t::fwd_piter p(image.domain());
    for (p.start(); p.is_valid(); p.next()) *position_++ = static_cast<V>(image(p));
  }

 private:
  V* position_;
};

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_PROFILE_PLANES_HPP

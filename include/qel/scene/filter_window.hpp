// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_FILTER_WINDOW_HPP
#define QEL_SCENE_FILTER_WINDOW_HPP

// One tree of one window: it writes the planes of a block, and tells which pixels stay in doubt.

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/sweep/sweep_sites.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>
#include <qel/scene/compute_proof_image.hpp>
#include <qel/scene/compute_touch_image.hpp>
#include <qel/scene/inner_edges.hpp>
#include <qel/scene/rectangle.hpp>
#include <qel/scene/window.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace qel {

namespace scene {

/// The two halves of a profile: the planes of a min-tree are raised, those of a max-tree lowered.
enum class direction { dark, bright };

/// A plane of a block while it is computed.
template <typename T>
struct block_plane {
  /// All pixels of `block_`, all in doubt. \throws std::bad_alloc
  explicit block_plane(const rectangle& block_)
      : block(block_), pixels(static_cast<std::size_t>(block.pixels())), doubt(block_) {}

  /// The pixel of a row and column of the scene. \pre The block has it.
  T& at(std::int64_t row, std::int64_t col) {
    return pixels[static_cast<std::size_t>((row - block.row) * block.cols + (col - block.col))];
  }

  rectangle block;        ///< where the plane lies in the scene
  std::vector<T> pixels;  ///< row by row
  rectangle doubt;        ///< around all pixels that are not proved; empty in the end
};

namespace internal {

/// Writes the pixels in doubt: each gets the value of its node; one without data keeps its own.
template <typename T>
void write_doubtful(const window<T>& w, const image2d<unsigned>& number, const image2d<T>& node_values,
                    block_plane<T>& plane) {
  const rectangle& r = plane.doubt;
  for (std::int64_t row = r.row; row < r.end_row(); ++row)
    for (std::int64_t col = r.col; col < r.end_col(); ++col) {
      const point2d p = w.site(row, col);
      plane.at(row, col) = w.has_data(p) ? node_values.element(number(p)) : w.values(p);
    }
}

/// The smallest rectangle around the pixels of `r` whose nodes are not proved. A pixel without data needs no proof.
template <typename T>
rectangle unproved(const window<T>& w, const image2d<unsigned>& number, const image2d<bool>& proved,
                   const rectangle& r) {
  rectangle doubt;
  for (std::int64_t row = r.row; row < r.end_row(); ++row) {
    const auto doubted = [&](std::int64_t col) {
      const point2d p = w.site(row, col);
      return !proved.element(number(p)) && w.has_data(p);
    };
    std::int64_t first = r.col;
    while (first < r.end_col() && !doubted(first)) ++first;
    if (first == r.end_col()) continue;
    std::int64_t last = r.end_col() - 1;
    while (!doubted(last)) --last;
    doubt = united(doubt, {row, first, 1, last - first + 1});
  }
  return doubt;
}

}  // namespace internal

/// Writes the pixels in doubt of `planes`, one plane for each threshold; those that `w` does not prove stay in doubt.
/// Cost: one tree; for each threshold two walks over the nodes and two over the pixels in doubt.
///
/// \tparam A    the attribute: area or diagonal.
/// \param scene the whole, of which `w` is a part. If `w` is all of it, nothing stays in doubt.
/// \pre   all that is in doubt lies in `w`.
/// \throws std::bad_alloc
template <typename A, typename T>
void filter_window(direction d, const window<T>& w, const rectangle& scene, const neighb2d& neighborhood,
                   const std::vector<typename A::result>& thresholds, std::vector<block_plane<T>>& planes) {
  using image = image2d<T>;
  using range = std::numeric_limits<T>;
  namespace tree = morpho::tree;
  using sites_type = tree::sweep_sites<image>;
  using tree_type = tree::data<image, sites_type>;

  const bool bright = d == direction::bright;
  const sites_type sites(w.values, bright);
  const tree_type whole(w.values, sites, neighborhood);
  const tree::node_tree<tree_type> nodes(whole);
  const auto attribute = tree::compute_attribute_image(A(), nodes);
  const auto touches = compute_touch_image(nodes, inner_edges_of(w.place, scene));
  const auto& number = nodes.table().number;

  for (std::size_t k = 0; k < planes.size(); ++k) {
    block_plane<T>& plane = planes[k];
    if (plane.doubt.empty()) continue;
    const auto reaches =
        pw::value_<image2d<typename A::result>>(attribute) >= pw::cst_<typename A::result>(thresholds[k]);
    image values = duplicate(nodes.f());
    tree::filter::direct(nodes, values, reaches);
    internal::write_doubtful(w, number, values, plane);
    const auto proved = compute_proof_image(nodes, reaches, touches, bright ? range::min() : range::max());
    plane.doubt = internal::unproved(w, number, proved, plane.doubt);
  }
}

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_FILTER_WINDOW_HPP

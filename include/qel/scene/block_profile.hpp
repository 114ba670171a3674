// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_BLOCK_PROFILE_HPP
#define QEL_SCENE_BLOCK_PROFILE_HPP

// Scenes too large for one image, in blocks: the profile of a block, to the bit that of the whole scene, from a window
// around the block. The plain form is one profile of the whole scene; `blocks.equal_the_whole_scene_under_every_rule`
// holds the two equal.
//
// `compute_proof_image` tells which pixels a window proves, and why. The smallest rectangle around the others is read
// again with twice the overlap, until nothing is in doubt. A window that is the whole scene proves all, so this ends,
// if memory lasts.
//
// A later window has a smaller rectangle in its middle and need not hold an earlier window. It overwrites all pixels of
// that rectangle, proved ones too, and doubts them anew: the last window that writes a pixel has proved it. Where the
// next window would not fit, the rectangle is cut into quarters, which need smaller windows.

#include <qel/core/neighb2d.hpp>
#include <qel/scene/filter_window.hpp>
#include <qel/scene/rectangle.hpp>
#include <qel/scene/window.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace qel {

namespace scene {

/// Thrown if no window that the limits allow proves a block.
struct not_provable {
  rectangle block;        ///< that `run` was called for
  std::size_t threshold;  ///< index of the first threshold in doubt
};

/// How windows are chosen.
struct window_limits {
  std::int64_t first_overlap;  ///< pixels on each side of a block
  std::int64_t most_pixels;    ///< of a window
};

/// What the blocks have cost.
struct block_report {
  std::int64_t blocks = 0;           ///< done
  std::int64_t read_again = 0;       ///< blocks that took more than one window for a direction
  std::int64_t pixels_again = 0;     ///< of their further windows
  std::int64_t largest_overlap = 0;  ///< of a window, in pixels on each side
};

/// Profiles blocks of a scene with values of type T by the attribute A, area or diagonal.
///
/// \param Read  `read(place)` gives the `window<T>` of a rectangle of the scene.
///
/// `report` adds to what it holds.
template <typename T, typename A, typename Read>
class block_profile {
 public:
  /// A value of the attribute.
  using threshold = typename A::result;

  /// \pre `neighborhood` and `report` outlive this object, which refers to them.
  block_profile(const rectangle& scene, Read read, const neighb2d& neighborhood, std::vector<threshold> thresholds,
                const window_limits& limits, block_report& report)
      : scene_(scene),
        read_(std::move(read)),
        neighborhood_(neighborhood),
        thresholds_(std::move(thresholds)),
        limits_(limits),
        report_(report) {}

  /// Calls `take_input(pixels)` with the input on `block`, row by row, then `take(direction, planes)` twice, the dark
  /// half first, with a `block_plane` for each threshold, in order. A pixel without data keeps its value.
  ///
  /// \pre    `block` lies in the scene and is not empty.
  /// \throws not_provable
  /// \throws std::bad_alloc and what `read`, `take_input` and `take` throw.
  template <typename TakeInput, typename Take>
  void run(const rectangle& block, TakeInput take_input, Take take) {
    windows_ = 0;
    const auto overlap = next_overlap(block, none_yet);
    if (!overlap) throw not_provable{block, 0};
    take_input(input(window_at(window_around(block, *overlap, scene_)), block));
    for (const direction d : {direction::dark, direction::bright}) {
      std::vector<block_plane<T>> planes(thresholds_.size(), block_plane<T>(block));
      prove(d, planes, none_yet);
      take(d, planes);
    }
    ++report_.blocks;
    if (windows_ > 2) ++report_.read_again;
  }

 private:
  static constexpr std::int64_t none_yet = -1;

  static std::vector<T> input(const window<T>& w, const rectangle& block) {
    std::vector<T> pixels;
    pixels.reserve(static_cast<std::size_t>(block.pixels()));
    for (std::int64_t row = block.row; row < block.end_row(); ++row)
      for (std::int64_t col = block.col; col < block.end_col(); ++col) pixels.push_back(w.values(w.site(row, col)));
    return pixels;
  }

  /// Proves what is in doubt by windows with more overlap than `overlap`.
  void prove(direction d, std::vector<block_plane<T>>& planes, std::int64_t overlap) {
    bool is_first = overlap == none_yet;
    for (rectangle core = in_doubt(planes); !core.empty(); core = in_doubt(planes)) {
      const auto next = next_overlap(core, overlap);
      if (!next) return prove_quarters(d, planes, overlap);
      overlap = *next;
      report_.largest_overlap = std::max(report_.largest_overlap, overlap);
      const rectangle place = window_around(core, overlap, scene_);
      if (!is_first) report_.pixels_again += place.pixels();
      is_first = false;
      filter_window<A>(d, window_at(place), scene_, neighborhood_, thresholds_, planes);
      ++windows_;
    }
  }

  /// A smaller rectangle in the middle leaves room for more around it.
  void prove_quarters(direction d, std::vector<block_plane<T>>& planes, std::int64_t overlap) {
    constexpr std::int64_t least_side = 4;
    const rectangle core = in_doubt(planes);
    const std::int64_t side = (std::max(core.rows, core.cols) + 1) / 2;
    if (side < least_side) throw not_provable{planes[0].block, first_in_doubt(planes)};
    std::vector<rectangle> doubts(planes.size());
    std::transform(planes.begin(), planes.end(), doubts.begin(), [](const auto& plane) { return plane.doubt; });
    for (const rectangle& quarter : blocks_of(core, side)) {
      for (std::size_t k = 0; k < planes.size(); ++k) planes[k].doubt = intersection(doubts[k], quarter);
      prove(d, planes, overlap);
    }
  }

  static rectangle in_doubt(const std::vector<block_plane<T>>& planes) {
    return std::accumulate(planes.begin(), planes.end(), rectangle(),
                           [](const rectangle& all, const auto& plane) { return united(all, plane.doubt); });
  }

  static std::size_t first_in_doubt(const std::vector<block_plane<T>>& planes) {
    const auto found = std::find_if(planes.begin(), planes.end(), [](const auto& p) { return !p.doubt.empty(); });
    return static_cast<std::size_t>(found - planes.begin());
  }

  bool fits(const rectangle& place) const {
    return std::max(place.rows, place.cols) <= longest_side && place.pixels() <= limits_.most_pixels;
  }

  /// The overlap of the next window around `core`: twice the last one, or as much as fits; none if that is not more
  /// than the last one.
  std::optional<std::int64_t> next_overlap(const rectangle& core, std::int64_t last) const {
    std::int64_t least = last + 1;
    std::int64_t most = last == none_yet ? limits_.first_overlap : std::max<std::int64_t>(2 * last, 1);
    if (!fits(window_around(core, least, scene_))) return {};
    while (least < most) {
      const std::int64_t middle = least + (most - least + 1) / 2;
      if (fits(window_around(core, middle, scene_)))
        least = middle;
      else
        most = middle - 1;
    }
    return least;
  }

  /// The window at `place`. It keeps the last one, because both directions begin with the same.
  const window<T>& window_at(const rectangle& place) {
    if (!(last_.place == place)) {
      last_ = window<T>();  // there may be no room for two
      last_ = read_(place);
    }
    return last_;
  }

  rectangle scene_;
  Read read_;
  const neighb2d& neighborhood_;
  std::vector<threshold> thresholds_;
  window_limits limits_;
  block_report& report_;
  window<T> last_;
  int windows_ = 0;  ///< filtered for this block
};

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_BLOCK_PROFILE_HPP

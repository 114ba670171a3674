// SPDX-License-Identifier: MIT
#ifndef PROGRAM_BLOCK_PLANES_HPP
#define PROGRAM_BLOCK_PLANES_HPP

// What one worker computes: the planes of a band on a block.

#include <qel/core/neighb2d.hpp>
#include <qel/core/point2d.hpp>

#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "program/memory_gate.hpp"
#include "program/progress.hpp"
#include "program/scene.hpp"
#include "program/scene_file.hpp"
#include "program/whole_profile.hpp"

namespace program {

/// The planes of a band on a block, row by row each, in their order in the file.
template <typename T>
using block_planes = std::vector<std::vector<T>>;

/// Reads windows of a band, each when there is memory for what will be made of it. The memory of the last window is free
/// again when the next one is read: the caller has let go of it then.
template <typename T>
class window_reader {
 public:
  window_reader(const scene_file& scene, int band, memory_gate& gate, std::int64_t window_bytes)
      : scene_(scene), band_(band), gate_(gate), window_bytes_(window_bytes) {}

  window<T> operator()(const rectangle& place) {
    stop_if_signalled();
    lease_ = {};
    lease_ = gate_.take(place.pixels() * window_bytes_);
    stop_if_signalled();
    return scene_.read<T>(band_, place);
  }

 private:
  const scene_file& scene_;
  int band_;
  memory_gate& gate_;
  std::int64_t window_bytes_;
  memory_gate::lease lease_;
};

/// Which of the two trees, each with its planes; the plane of the input goes with the bright one.
struct halves {
  bool dark = true;
  bool bright = true;
};

/// The planes of a block in a window by itself, rules and all.
template <typename A, typename T>
block_planes<T> planes_of_window(const window<T>& w, const rectangle& block, halves wanted,
                                 const qel::neighb2d& neighborhood, const std::vector<typename A::result>& thresholds,
                                 const std::string& rule) {
  block_planes<T> planes;
  if (wanted.dark) {
    const std::vector<typename A::result> reversed(thresholds.rbegin(), thresholds.rend());
    add_planes<A>(direction::dark, w, block, neighborhood, reversed, rule, planes);
  }
  if (wanted.bright) {
    planes.push_back(pixels_of(w, block, [&](const qel::point2d& p) { return w.values(p); }));
    stop_if_signalled();
    add_planes<A>(direction::bright, w, block, neighborhood, thresholds, rule, planes);
  }
  return planes;
}

/// The planes of a block as those of the whole scene; under any rule, as the four agree.
///
/// \throws not_provable, and what the reader throws.
template <typename A, typename T>
block_planes<T> proved_planes(const rectangle& scene, window_reader<T>& read, const rectangle& block,
                              const qel::neighb2d& neighborhood, const std::vector<typename A::result>& thresholds,
                              const window_limits& limits, block_report& report) {
  block_planes<T> planes;
  const auto by_reference = [&](const rectangle& place) { return read(place); };
  block_profile<T, A, decltype(by_reference)> profile(scene, by_reference, neighborhood, thresholds, limits, report);
  std::vector<T> input;
  profile.run(
      block, [&](std::vector<T> pixels) { input = std::move(pixels); },
      [&](direction d, std::vector<block_plane<T>>& found) {
        for (std::size_t k = 0; k < found.size(); ++k)
          planes.push_back(std::move(found[d == direction::dark ? found.size() - 1 - k : k].pixels));
        if (d == direction::dark) planes.push_back(std::move(input));
      });
  return planes;
}

}  // namespace program

#endif  // PROGRAM_BLOCK_PLANES_HPP

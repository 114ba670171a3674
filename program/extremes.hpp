// SPDX-License-Identifier: MIT
#ifndef PROGRAM_EXTREMES_HPP
#define PROGRAM_EXTREMES_HPP

// Thresholds that only the whole scene reaches, or nothing: their planes are flat, and no block can prove it.

#include <qel/core/box2d.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "program/progress.hpp"
#include "program/scene.hpp"
#include "program/scene_file.hpp"

namespace program {

/// Whether no region but the whole scene reaches a threshold: of area if L is unsigned, else of diagonal. A smaller region can
/// have the diagonal of the scene.
template <typename L>
bool is_for_whole(L threshold, const rectangle& scene) {
  if constexpr (std::is_unsigned_v<L>)
    return threshold >= scene.pixels();
  else
    return threshold > std::hypot(static_cast<double>(scene.rows), static_cast<double>(scene.cols));
}

/// The least and the greatest value of a band.
template <typename T>
struct extremes {
  T least = std::numeric_limits<T>::max();
  T greatest = std::numeric_limits<T>::min();
};

/// Those of all pixels, with data or not. \throws failure
template <typename T>
extremes<T> extremes_of(const scene_file& scene, int band) {
  constexpr std::int64_t side = 2048;
  extremes<T> e;
  for (const rectangle& block : qel::scene::blocks_of(scene.extent(), side)) {
    stop_if_signalled();
    const window<T> w = scene.read<T>(band, block);
    qel::box2d::fwd_piter p(w.values.domain());
    for (p.start(); p.is_valid(); p.next()) {
      e.least = std::min(e.least, w.values(p));
      e.greatest = std::max(e.greatest, w.values(p));
    }
  }
  return e;
}

}  // namespace program

#endif  // PROGRAM_EXTREMES_HPP

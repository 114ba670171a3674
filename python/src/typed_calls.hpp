// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_TYPED_CALLS_HPP
#define PYTHON_SRC_TYPED_CALLS_HPP

// The computations on values of type T. Only declared here: src/types holds one instantiation in each translation unit,
// because each is large. Nothing in them knows Python; what they are given they call without the interpreter's lock.

#include "settings.hpp"
#include "stop.hpp"
#include "strided_image.hpp"

#include <qel/core/image2d.hpp>
#include <qel/scene/block_profile.hpp>
#include <qel/scene/rectangle.hpp>

#include <cstdint>
#include <functional>
#include <vector>

namespace python {

/// Writes the 2N + 1 planes of `image` from `planes` on, one after the other in raster order.
/// \throws std::bad_alloc, stopped
template <typename T>
void write_profile(const qel::image2d<T>& image, const settings& wanted, const stop_sign& stop, T* planes);

/// A plane in figures: sums over its pixels of their distance from the least value of the image, and of its square. What lies
/// below that value, as `sub` can have it, counts as 0.
struct plane_sums {
  double values = 0;
  double squares = 0;
};

/// The 2N + 1 planes of `image` in figures; no plane is kept. Exact up to 2^53.
/// \throws std::bad_alloc, stopped
template <typename T>
std::vector<plane_sums> sum_profile(const qel::image2d<T>& image, const settings& wanted, const stop_sign& stop);

/// A part of a scene that is to be profiled, and what that may cost.
struct block_task {
  qel::scene::rectangle scene;
  qel::scene::rectangle block;
  qel::scene::window_limits limits;
};

/// Gives the pixels of a place of the scene to be copied at once: `use(array)` is called before it returns.
using scene_reader =
    std::function<void(const qel::scene::rectangle& place, const std::function<void(const strided_image&)>& use)>;

/// Writes the 2N + 1 planes of a block, to the bit those of the whole scene, by area or diagonal.
/// \throws std::bad_alloc, qel::scene::not_provable, what `read` throws
template <typename T>
void write_block_profile(const block_task& task, const settings& wanted, const scene_reader& read, T* planes);

/// What windows around blocks need.
struct window_needs {
  std::int64_t bytes = 0;  ///< memory for each pixel, at worst
  double reach = 0;        ///< pixels from end to end of most regions below the largest threshold; 0 for inertia, std
};

/// Those of blocks of values of type T by the settings.
template <typename T>
window_needs needs_of_windows(const settings& wanted);

}  // namespace python

#endif  // PYTHON_SRC_TYPED_CALLS_HPP

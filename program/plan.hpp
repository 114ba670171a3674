// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PLAN_HPP
#define PROGRAM_PLAN_HPP

#include <cstdint>
#include <optional>
#include <string>

#include "program/scene.hpp"

namespace program {

/// What decides between the whole and blocks.
struct task {
  rectangle scene;
  rectangle part;                       ///< of the scene: what is written
  std::int64_t window_bytes;            ///< memory for each pixel of a window, at worst
  std::int64_t block_bytes;             ///< and for each pixel of a block, whose planes are kept until they are proved
  std::int64_t memory;                  ///< megabytes
  std::optional<std::int64_t> block;    ///< the side, if the user chose it
  std::optional<std::int64_t> overlap;  ///< the same
  double reach;                         ///< pixels from end to end of a region of the size of the largest threshold
  bool provable;                        ///< by blocks; true for area and diagonal
  bool inexact;                         ///< whether blocks that prove nothing are wanted
};

/// How the work is done.
struct plan {
  std::optional<std::int64_t> side;  ///< of the blocks; none: the whole scene at once
  window_limits limits;
};

/// Memory that the program takes beside windows and blocks, in megabytes: its libraries, and GDAL's cache.
inline constexpr std::int64_t base_memory = 110;

/// GDAL's cache, in megabytes. Blocks of tiles are written as a whole, so it need not be large.
inline constexpr std::int64_t cache_memory = 48;

/// \throws failure if the task can't be done, with the reason and what would help.
plan make_plan(const task& t);

/// Half of the memory that is free now, in megabytes.
std::int64_t default_memory();

}  // namespace program

#endif  // PROGRAM_PLAN_HPP

// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PLAN_HPP
#define PROGRAM_PLAN_HPP

#include <cstdint>
#include <optional>

#include "program/scene.hpp"

namespace program {

/// What decides between the whole and blocks. The number of jobs is not part of it, for it must not change the file.
struct task {
  rectangle scene;
  rectangle part;                       ///< of the scene: what is written
  std::int64_t window_bytes;            ///< memory for each pixel of a window, at worst
  std::int64_t planes_bytes;            ///< and for each pixel of a block, whose planes are kept until they are written
  std::int64_t memory;                  ///< megabytes, for all jobs together
  std::optional<std::int64_t> block;    ///< the side, if the user chose it
  std::optional<std::int64_t> overlap;  ///< the same
  double reach;                         ///< pixels from end to end of a region of the size of the largest threshold
  bool provable;                        ///< by blocks; true for area and diagonal
  bool inexact;                         ///< whether blocks that prove nothing are wanted
};

/// How the work is done.
struct plan {
  bool whole;         ///< the scene is one window
  std::int64_t rows;  ///< of a block
  std::int64_t cols;  ///< the same
  window_limits limits;
  std::int64_t windows;  ///< bytes for the windows of all jobs
  std::int64_t planes;   ///< bytes for planes that wait to be written
};

/// GDAL's cache, in megabytes, if all may take `memory`. What jobs read and write is in it, in parts.
std::int64_t cache_memory(std::int64_t memory);

/// \throws failure if the task can't be done, with the reason and what would help.
plan make_plan(const task& t);

/// `p` for a file that is stored in strips of `cols` columns: blocks as wide, if windows of them fit.
plan in_strips(plan p, const task& t);

/// Half of the memory that is free now, in megabytes.
std::int64_t default_memory();

}  // namespace program

#endif  // PROGRAM_PLAN_HPP

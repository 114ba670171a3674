// SPDX-License-Identifier: MIT
#include "program/plan.hpp"

#include <cpl_vsi.h>

#include <algorithm>
#include <cmath>
#include <fstream>

#include "program/failure.hpp"

namespace program {
namespace {

constexpr std::int64_t megabyte = 1000000;

/// The first overlap: enough for nearly all regions of the threshold's size, which are not round; bounded, so that windows
/// of the size that fits are mostly block.
std::int64_t guessed_overlap(const task& t, std::int64_t window_pixels) {
  const double enough = std::ceil(t.reach);
  const double bound = std::sqrt(static_cast<double>(window_pixels)) / 8;
  return static_cast<std::int64_t>(std::clamp(enough, 1.0, std::max(1.0, bound)));
}

/// The greatest side of blocks whose windows fit. Multiples of 256 suit the tiles of files.
std::int64_t greatest_side(const task& t, std::int64_t budget, std::int64_t overlap) {
  std::int64_t least = 0;
  std::int64_t most = longest_side - std::min(2 * overlap, longest_side);
  while (least < most) {
    const std::int64_t side = least + (most - least + 1) / 2;
    const std::int64_t window = side + 2 * overlap;
    if (window * window * t.window_bytes + side * side * t.block_bytes <= budget)
      least = side;
    else
      most = side - 1;
  }
  return least > 256 ? least / 256 * 256 : least;
}

std::string megabytes_for(const task& t) {
  return std::to_string(t.scene.pixels() * t.window_bytes / megabyte + base_memory + 1);
}

}  // namespace

plan make_plan(const task& t) {
  const std::int64_t budget = (t.memory - base_memory) * megabyte;
  const std::int64_t window_pixels = std::max<std::int64_t>(budget, 0) / t.window_bytes;
  const bool short_sides = std::max(t.scene.rows, t.scene.cols) <= longest_side;
  const bool whole_fits = short_sides && t.scene.pixels() <= window_pixels;
  if (!t.provable && !t.inexact) {
    if (t.block)
      throw failure(
          "--block: inertia and std can shrink from a region to a greater one, so no block can be sure of its regions; "
          "add --inexact to have them all the same");
    if (!short_sides)
      throw failure(
          "the scene has more than " + std::to_string(longest_side) +
          " pixels on a side; by inertia and std only parts of it can be computed: gdal_translate -srcwin, or "
          "--inexact");
    if (!whole_fits)
      throw failure("the scene does not fit into " + std::to_string(t.memory) + " MB; it needs --memory " +
                    megabytes_for(t) + ", or --inexact");
  }
  const bool part_is_whole = t.part == t.scene;
  if (!t.block && whole_fits && (part_is_whole || !t.provable)) return {{}, {0, window_pixels}};

  const std::int64_t overlap = t.overlap.value_or(guessed_overlap(t, window_pixels));
  const std::int64_t needed = std::max(t.part.rows, t.part.cols);
  const std::int64_t side = std::min(t.block.value_or(greatest_side(t, budget, overlap)), needed);
  const std::int64_t block_pixels = std::min(side, t.part.rows) * std::min(side, t.part.cols);
  const std::int64_t left = budget - block_pixels * t.block_bytes;
  if (side < 1 || left < block_pixels * t.window_bytes)
    throw failure(t.block ? "blocks of this size do not fit into " + std::to_string(t.memory) +
                                " MB; give a smaller --block or more --memory"
                          : "--memory " + std::to_string(t.memory) + " is too little; give " +
                                std::to_string(base_memory + 50) + " or more");
  return {side, {overlap, left / t.window_bytes}};
}

std::int64_t default_memory() {
  std::int64_t free = CPLGetUsablePhysicalRAM();  // what limits of the system or a batch engine leave
  std::ifstream information("/proc/meminfo");
  std::string name;
  for (std::int64_t value; information >> name >> value; information.ignore(80, '\n'))
    if (name == "MemAvailable:") free = free > 0 ? std::min(free, value * 1024) : value * 1024;
  return free / 2 / megabyte;
}

}  // namespace program

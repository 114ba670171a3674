// SPDX-License-Identifier: MIT
#include "program/plan.hpp"

#include <cpl_vsi.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>

#include "program/failure.hpp"

namespace program {
namespace {

constexpr std::int64_t megabyte = 1000000;

/// Memory that the program takes beside windows, planes and GDAL's cache, in megabytes: its libraries.
constexpr std::int64_t base_memory = 62;

/// Blocks of this side are large enough for any threshold that is small against them, and a block takes less than a second.
constexpr std::int64_t usual_side = 2048;

/// Blocks of so many times the overlap read little twice.
constexpr std::int64_t worthwhile = 24;

std::int64_t budget_of(std::int64_t memory) {
  constexpr std::int64_t most = 1'000'000'000;  // a petabyte
  memory = std::min(memory, most);
  return std::max<std::int64_t>(memory - base_memory - cache_memory(memory), 0) * megabyte;
}

/// What is kept for planes: those of one block, and an eighth where that leaves room for more.
std::int64_t kept_for_planes(const task& t, std::int64_t budget, std::int64_t block_pixels) {
  return std::max(block_pixels * t.planes_bytes, budget / 8);
}

bool fits(const task& t, std::int64_t budget, std::int64_t window_pixels, std::int64_t block_pixels) {
  return window_pixels * t.window_bytes <= budget - kept_for_planes(t, budget, block_pixels);
}

/// The first overlap: enough for nearly all regions of the threshold's size, which are not round; bounded, so that windows
/// of the size that fits are mostly block.
std::int64_t guessed_overlap(const task& t, std::int64_t budget) {
  const double enough = std::ceil(t.reach);
  const std::int64_t window_pixels = budget / t.window_bytes;
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
    if (fits(t, budget, window * window, side * side))
      least = side;
    else
      most = side - 1;
  }
  return least > 256 ? least / 256 * 256 : least;
}

/// A side that is much longer than the overlap, so that little is read twice, and that leaves room for the windows of some
/// jobs where this costs little.
std::int64_t suitable_side(const task& t, std::int64_t budget, std::int64_t overlap) {
  const auto times_overlap = [&](std::int64_t times) { return (times * overlap + 511) / 512 * 512; };
  const std::int64_t wanted = std::max(usual_side, times_overlap(worthwhile));
  const std::int64_t modest = std::max(usual_side, times_overlap(8));
  const std::int64_t of_some_jobs = greatest_side(t, budget / 4, overlap);
  return std::min(std::clamp(of_some_jobs, modest, wanted), greatest_side(t, budget, overlap));
}

/// The least memory with which `possible` is true, in megabytes; 0 if there is none. \param possible  stays true with more.
template <typename Possible>
std::int64_t least_memory(Possible possible) {
  std::int64_t least = 0;
  std::int64_t most = std::int64_t{1} << 40;
  if (!possible(most)) return 0;
  while (least < most) {
    const std::int64_t middle = least + (most - least) / 2;
    if (possible(middle))
      most = middle;
    else
      least = middle + 1;
  }
  return least;
}

std::int64_t longest(const rectangle& r) { return std::max(r.rows, r.cols); }

void refuse_blocks_without_proof(const task& t) {
  if (t.block)
    throw failure(
        "--block: inertia and std can shrink from a region to a greater one, so no block can be sure of its regions; "
        "add --inexact to have them all the same");
  if (longest(t.scene) > longest_side)
    throw failure("the scene has more than " + std::to_string(longest_side) +
                  " pixels on a side; by inertia and std only parts of it can be computed: gdal_translate -srcwin, or "
                  "--inexact");
  const std::int64_t enough =
      least_memory([&](std::int64_t memory) { return fits(t, budget_of(memory), t.scene.pixels(), t.part.pixels()); });
  if (t.memory < enough)
    throw failure("the scene does not fit into " + std::to_string(t.memory) + " MB; it needs --memory " +
                  std::to_string(enough) + ", or --inexact");
}

/// The least side, if the user gave none, that is worth the work.
constexpr std::int64_t least_side = 64;

std::int64_t block_pixels(const task& t, std::int64_t side) {
  return std::min(side, t.part.rows) * std::min(side, t.part.cols);
}

/// Whether the windows of all blocks fit: those that nothing proves are as large as the overlap says.
bool windows_fit(const task& t, std::int64_t side, std::int64_t overlap, std::int64_t bytes) {
  const std::int64_t rows = std::min(side + 2 * overlap, t.scene.rows);
  const std::int64_t cols = std::min(side + 2 * overlap, t.scene.cols);
  return std::max(rows, cols) <= longest_side && rows * cols * t.window_bytes <= bytes;
}

}  // namespace

std::int64_t cache_memory(std::int64_t memory) { return std::clamp<std::int64_t>(memory / 16, 48, 256); }

plan make_plan(const task& t) {
  if (!t.provable && !t.inexact) refuse_blocks_without_proof(t);
  const std::int64_t budget = budget_of(t.memory);
  const std::int64_t overlap = std::min(t.overlap.value_or(guessed_overlap(t, budget)), longest(t.scene));
  const bool whole_fits = longest(t.scene) <= longest_side && fits(t, budget, t.scene.pixels(), t.part.pixels());
  const std::int64_t suitable = suitable_side(t, budget, overlap);
  const bool whole_is_better =
      !t.provable || (t.part == t.scene && longest(t.part) <= std::max(usual_side, worthwhile * overlap));
  if (!t.block && whole_fits && whole_is_better) {
    const std::int64_t planes = kept_for_planes(t, budget, t.part.pixels());
    return {true, t.part.rows, t.part.cols, {0, t.scene.pixels()}, budget - planes, planes};
  }
  const std::int64_t side = std::min(t.block.value_or(suitable), longest(t.part));
  const auto possible = [&](std::int64_t memory) {
    const std::int64_t least = t.block ? side : std::min(least_side, longest(t.part));
    const std::int64_t pixels = block_pixels(t, least);
    const std::int64_t bytes = budget_of(memory);
    const std::int64_t around = t.overlap ? 0 : guessed_overlap(t, bytes);
    return fits(t, bytes, pixels, pixels) &&
           (t.provable || windows_fit(t, least, around, bytes - kept_for_planes(t, bytes, pixels)));
  };
  if (!possible(t.memory) || side < 1) {
    const std::string enough = std::to_string(least_memory(possible));
    throw failure(t.block ? "blocks of this size do not fit into " + std::to_string(t.memory) +
                                " MB; give a smaller --block, or --memory " + enough
                          : "--memory " + std::to_string(t.memory) + " is too little; give " + enough + " or more");
  }
  const std::int64_t planes = kept_for_planes(t, budget, block_pixels(t, side));
  if (!t.provable && !windows_fit(t, side, overlap, budget - planes))
    throw failure("blocks of " + std::to_string(side) + " pixels a side with an overlap of " + std::to_string(overlap) +
                  " are too large; give less --overlap, or a smaller --block");
  return {false, side, side, {overlap, (budget - planes) / t.window_bytes}, budget - planes, planes};
}

plan in_strips(plan p, const task& t) {
  const std::int64_t rows = p.rows * p.cols / t.part.cols;
  const std::int64_t suitable = rows > 256 ? rows / 256 * 256 : rows;
  const std::int64_t pixels = (suitable + 2 * p.limits.first_overlap) * (t.part.cols + 2 * p.limits.first_overlap);
  const bool possible = !p.whole && !t.block && suitable > p.limits.first_overlap && t.part.cols <= longest_side &&
                        pixels <= p.limits.most_pixels;
  if (!possible) return p;
  p.rows = suitable;
  p.cols = t.part.cols;
  return p;
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

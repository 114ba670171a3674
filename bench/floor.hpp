// SPDX-License-Identifier: MIT
#ifndef BENCH_FLOOR_HPP
#define BENCH_FLOOR_HPP

// The work that no program for this job can leave out. What a call takes beyond it is ours to explain.

#include <cstddef>
#include <cstdint>

namespace bench {

/// For each of the two directions: sorts all positions by value with the fewest counting passes, then takes one pass
/// over them in sorted order that reads and writes a 4-byte word at each position. Then writes `planes` planes of
/// `image`, transposed.
///
/// A counting pass takes up to 16 bits: one for values of 8 and 16 bits, two for wider ones whose range exceeds 16
/// bits, each over half the bits of the range. All blocks are allocated afresh, as in a call.
///
/// \param image  rows x cols values, row by row. \pre both lengths are multiples of 64.
/// \return a number that depends on all of the work.
template <typename T>
std::uint32_t run_floor(const T* image, std::size_t rows, std::size_t cols, std::size_t planes);

}  // namespace bench

#endif  // BENCH_FLOOR_HPP

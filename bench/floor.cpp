// SPDX-License-Identifier: MIT
#include "bench/floor.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace bench {

namespace {

/// A block that is not set: to set it costs a pass.
template <typename T>
std::unique_ptr<T[]> new_block(std::size_t count) {
  return std::unique_ptr<T[]>(new T[count]);
}

using positions = std::unique_ptr<std::uint32_t[]>;

/// What one counting pass sorts by: some bits of the distance of a value from the least one.
struct digit {
  std::uint32_t least;
  unsigned shift;
  unsigned bits;

  std::size_t count() const { return std::size_t{1} << bits; }

  template <typename T>
  std::size_t operator()(T value) const {
    return ((static_cast<std::uint32_t>(value) - least) >> shift) & (count() - 1);
  }
};

/// The fewest digits that tell all values of `image` apart, the low one first.
template <typename T>
std::vector<digit> digits_of(const T* image, std::size_t count) {
  if constexpr (sizeof(T) <= 2) return {{0, 0, 8 * sizeof(T)}};
  T least = image[0];
  T greatest = image[0];
  for (std::size_t i = 1; i < count; ++i) {
    least = std::min(least, image[i]);
    greatest = std::max(greatest, image[i]);
  }
  const auto offset = static_cast<std::uint32_t>(least);
  const std::uint32_t range = static_cast<std::uint32_t>(greatest) - offset;
  unsigned bits = 1;
  while (bits < 32 && range >> bits != 0) ++bits;
  if (bits <= 16) return {{offset, 0, bits}};
  return {{offset, 0, bits / 2}, {offset, bits / 2, bits - bits / 2}};
}

/// For each value of the digit, the place of the first position that has it.
template <typename T>
std::vector<std::uint32_t> places(const T* image, std::size_t count, digit key, bool decreasing) {
  std::vector<std::uint32_t> place(key.count());
  for (std::size_t i = 0; i < count; ++i) ++place[key(image[i])];
  std::uint32_t next = 0;
  for (std::size_t k = 0; k < place.size(); ++k) {
    std::uint32_t& here = place[decreasing ? place.size() - 1 - k : k];
    next += std::exchange(here, next);
  }
  return place;
}

template <typename T>
positions sorted_positions(const T* image, std::size_t count, bool decreasing) {
  const auto digits = digits_of(image, count);
  const digit low = digits.front();
  auto place = places(image, count, low, decreasing);
  positions sorted = new_block<std::uint32_t>(count);
  if (digits.size() == 1) {
    for (std::size_t i = 0; i < count; ++i) sorted[place[low(image[i])]++] = static_cast<std::uint32_t>(i);
    return sorted;
  }

  // Each value goes along with its position: to fetch it again would miss the cache at every step.
  struct valued_position {
    T value;
    std::uint32_t position;
  };
  const auto half_sorted = new_block<valued_position>(count);
  for (std::size_t i = 0; i < count; ++i)
    half_sorted[place[low(image[i])]++] = {image[i], static_cast<std::uint32_t>(i)};
  const digit high = digits.back();
  place = places(image, count, high, decreasing);
  for (std::size_t i = 0; i < count; ++i) sorted[place[high(half_sorted[i].value)]++] = half_sorted[i].position;
  return sorted;
}

/// A square of values, with as many on a side as a vector of 16 bytes holds.
template <typename T>
struct square {
  static constexpr std::size_t side = 16 / sizeof(T);
  typedef T vector __attribute__((vector_size(16)));

  vector line[side];

  void load(const T* first, std::size_t stride) {
    for (std::size_t i = 0; i < side; ++i) std::memcpy(&line[i], first + i * stride, sizeof line[i]);
  }

  void store(T* first, std::size_t stride) const {
    for (std::size_t i = 0; i < side; ++i) std::memcpy(first + i * stride, &line[i], sizeof line[i]);
  }

  /// Each step interleaves the first half of the lines with the second; log2(side) of them transpose.
  void transpose() {
    for (std::size_t step = 1; step < side; step *= 2) {
      const square old = *this;
      for (std::size_t i = 0; i < side / 2; ++i) {
        line[2 * i] = interleave<0>(old.line[i], old.line[i + side / 2], std::make_index_sequence<side>());
        line[2 * i + 1] = interleave<side / 2>(old.line[i], old.line[i + side / 2], std::make_index_sequence<side>());
      }
    }
  }

 private:
  template <std::size_t first, std::size_t... i>
  static vector interleave(vector a, vector b, std::index_sequence<i...>) {
    return __builtin_shufflevector(a, b, (first + i / 2 + i % 2 * side)...);
  }
};

/// Writes `image` column by column, by tiles one cache line wide and high: each line is read and written at once.
template <typename T>
void write_transposed(const T* image, std::size_t rows, std::size_t cols, T* result) {
  constexpr std::size_t side = square<T>::side;
  constexpr std::size_t line = 64 / sizeof(T);
  alignas(64) T tile[line * line];
  for (std::size_t row = 0; row < rows; row += line)
    for (std::size_t col = 0; col < cols; col += line) {
      for (std::size_t i = 0; i < line; i += side)
        for (std::size_t j = 0; j < line; j += side) {
          square<T> values;
          values.load(image + (row + i) * cols + col + j, cols);
          values.transpose();
          values.store(tile + j * line + i, line);
        }
      for (std::size_t j = 0; j < line; ++j) std::memcpy(result + (col + j) * rows + row, tile + j * line, 64);
    }
}

}  // namespace

template <typename T>
std::uint32_t run_floor(const T* image, std::size_t rows, std::size_t cols, std::size_t planes) {
  const std::size_t count = rows * cols;
  const auto release = [](std::uint32_t* block) { std::free(block); };
  const std::unique_ptr<std::uint32_t[], decltype(release)> words(
      static_cast<std::uint32_t*>(std::calloc(count, sizeof(std::uint32_t))), release);
  if (words == nullptr) throw std::bad_alloc();
  for (const bool decreasing : {true, false}) {
    const positions sorted = sorted_positions(image, count, decreasing);
    std::uint32_t* const word = words.get();
    for (std::size_t i = 0; i < count; ++i) word[sorted[i]] += static_cast<std::uint32_t>(i);
  }

  const auto output = new_block<T>(planes * count);
  for (std::size_t plane = 0; plane < planes; ++plane)
    write_transposed(image, rows, cols, output.get() + plane * count);
  return words[count / 2] + static_cast<std::uint32_t>(output[planes * count - 1]);
}

template std::uint32_t run_floor(const unsigned char*, std::size_t, std::size_t, std::size_t);
template std::uint32_t run_floor(const unsigned short*, std::size_t, std::size_t, std::size_t);
template std::uint32_t run_floor(const int*, std::size_t, std::size_t, std::size_t);

}  // namespace bench

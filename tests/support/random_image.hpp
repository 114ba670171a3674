// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_RANDOM_IMAGE_HPP
#define TESTS_SUPPORT_RANDOM_IMAGE_HPP

// The value types of images, and small random images for tests. A seed gives the same ones on every machine: they come
// from the engine's own output, which the standard fixes, not from a distribution class.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <utility>
#include <vector>

namespace support {

using random_engine = std::mt19937_64;

/// A list of the eight value types of an image, and of `More`.
template <template <typename...> class List, typename... More>
using value_types_in =
    List<signed char, unsigned char, short, unsigned short, int, unsigned, std::int64_t, std::uint64_t, More...>;

/// A number from 0 to `n` - 1. The slight unevenness of the modulo does not matter here. \pre `n` is not 0.
inline std::size_t below(std::size_t n, random_engine& engine) { return static_cast<std::size_t>(engine() % n); }

/// A plain image, row by row: the value of row r and column c is `values[r * cols + c]`.
template <typename T>
struct matrix {
  std::size_t rows;
  std::size_t cols;
  std::vector<T> values;
};

template <typename T>
bool operator==(const matrix<T>& a, const matrix<T>& b) {
  return a.rows == b.rows && a.cols == b.cols && a.values == b.values;
}

/// Prints the image in MATLAB's notation: you can type a failing case into a host.
template <typename T>
std::ostream& operator<<(std::ostream& out, const matrix<T>& m) {
  out << m.rows << " x " << m.cols << " [";
  for (std::size_t i = 0; i < m.values.size(); ++i) out << (i == 0 ? "" : i % m.cols == 0 ? "; " : " ") << +m.values[i];
  return out << "]";
}

template <typename T>
matrix<T> transposed(const matrix<T>& m) {
  matrix<T> result{m.cols, m.rows, {}};
  for (std::size_t c = 0; c < m.cols; ++c)
    for (std::size_t r = 0; r < m.rows; ++r) result.values.push_back(m.values[r * m.cols + c]);
  return result;
}

/// The values column by column, the order of a host's array.
template <typename T>
std::vector<T> column_major(const matrix<T>& m) {
  return transposed(m).values;
}

/// The image of `rows` x `cols` whose values stand column by column in `block` from `first` on.
template <typename T>
matrix<T> from_column_major(std::size_t rows, std::size_t cols, const std::vector<T>& block, std::size_t first = 0) {
  const auto begin = block.begin() + static_cast<std::ptrdiff_t>(first);
  return transposed(matrix<T>{cols, rows, {begin, begin + static_cast<std::ptrdiff_t>(rows * cols)}});
}

enum class flavour { few_levels, full_range, all_distinct, constant, ramp, checkerboard };

constexpr std::array<flavour, 6> flavours = {flavour::few_levels, flavour::full_range, flavour::all_distinct,
                                             flavour::constant,   flavour::ramp,       flavour::checkerboard};

namespace internal {

/// Any value of T; one in three is an extreme or a neighbour of zero.
template <typename T>
T any_value(random_engine& engine) {
  const std::array<T, 4> special = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), T(0), T(1)};
  return below(3, engine) == 0 ? special[below(4, engine)] : static_cast<T>(engine());
}

/// Two to five values: neighbours at the least value, at zero or at the greatest, or any values.
template <typename T>
std::vector<T> palette(random_engine& engine) {
  const std::size_t place = below(4, engine);
  std::vector<T> result(2 + below(4, engine));
  for (std::size_t k = 0; k < result.size(); ++k) {
    const T any = any_value<T>(engine);
    const T step = static_cast<T>(k);
    result[k] = place == 0   ? static_cast<T>(std::numeric_limits<T>::min() + step)
                : place == 1 ? step
                : place == 2 ? static_cast<T>(std::numeric_limits<T>::max() - step)
                             : any;
  }
  return result;
}

/// `n` different values spread over half the range of T around zero, in random order. They repeat if T has fewer.
template <typename T>
std::vector<T> distinct_values(std::size_t n, random_engine& engine) {
  const std::uint64_t step = std::max<std::uint64_t>(1, (std::uint64_t{1} << (sizeof(T) * 8 - 1)) / n);
  std::vector<T> result;
  const std::uint64_t least = 0 - n / 2 * step;
  for (std::size_t i = 0; i < n; ++i) result.push_back(static_cast<T>(least + i * step));
  for (std::size_t i = n; i > 1; --i) {
    const std::size_t other = below(i, engine);
    const T last = result[i - 1];
    result[i - 1] = result[other];
    result[other] = last;
  }
  return result;
}

}  // namespace internal

/// A random image of the given kind:
///   few_levels    two to five values, neighbours or far apart: large flat zones and many ties;
///   full_range    any values of T, its extremes among them;
///   all_distinct  every site a node of its own;
///   constant      one value, any;
///   ramp          values that grow along rows and columns with a little noise: long branches, steep or flat;
///   checkerboard  two values in turn: as many leaves as there can be.
template <typename T>
matrix<T> random_image(std::size_t rows, std::size_t cols, flavour kind, random_engine& engine) {
  const std::vector<T> palette = internal::palette<T>(engine);
  const T first = internal::any_value<T>(engine);
  const T second = internal::any_value<T>(engine);
  const std::size_t row_slope = 1 + below(4, engine);
  const std::size_t col_slope = 1 + below(4, engine);
  const std::size_t flatness = 1 + 7 * below(2, engine);
  const auto distinct = internal::distinct_values<T>(rows * cols, engine);
  const auto value = [&](std::size_t row, std::size_t col) -> T {
    switch (kind) {
      case flavour::few_levels:
        return palette[below(palette.size(), engine)];
      case flavour::full_range:
        return internal::any_value<T>(engine);
      case flavour::all_distinct:
        return distinct[row * cols + col];
      case flavour::constant:
        return first;
      case flavour::ramp: {
        const std::size_t height = (row_slope * row + col_slope * col) / flatness;
        return static_cast<T>(height + below(3, engine));
      }
      default:
        return (row + col) % 2 == 0 ? first : second;
    }
  };
  matrix<T> image{rows, cols, {}};
  for (std::size_t i = 0; i < rows * cols; ++i) image.values.push_back(value(i / cols, i % cols));
  return image;
}

}  // namespace support

#endif  // TESTS_SUPPORT_RANDOM_IMAGE_HPP

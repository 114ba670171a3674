// SPDX-License-Identifier: MIT
#ifndef PROGRAM_WINDOW_HPP
#define PROGRAM_WINDOW_HPP

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>

#include <cstdint>

#include "program/rectangle.hpp"

namespace program {

/// Rows or columns that an image of the library can have: its coordinates have 16 bits, and its border of 3 counts.
inline constexpr std::int64_t longest_side = 32765;

/// A part of a scene that has been read, as an image whose first site is (0, 0).
template <typename T>
struct window {
  rectangle place;                    ///< in the scene
  qel::image2d<T> values;             ///< all pixels
  qel::image2d<unsigned char> valid;  ///< 0 where the scene has no data; no image if there are data everywhere

  window() = default;
  explicit window(const rectangle& place_) : place(place_), values(domain()) {}

  qel::box2d domain() const { return {qel::point2d(0, 0), site(place.end_row() - 1, place.end_col() - 1)}; }

  /// The site of a pixel of the scene. \pre the window has it.
  qel::point2d site(std::int64_t row, std::int64_t col) const {
    return {qel::internal::narrowed<short>(row - place.row), qel::internal::narrowed<short>(col - place.col)};
  }

  /// Whether there are data at a site.
  bool has_data(const qel::point2d& p) const { return !valid.is_valid() || valid(p) != 0; }
};

}  // namespace program

#endif  // PROGRAM_WINDOW_HPP

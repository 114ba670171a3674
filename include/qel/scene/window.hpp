// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_WINDOW_HPP
#define QEL_SCENE_WINDOW_HPP

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/scene/rectangle.hpp>

#include <cstdint>

namespace qel {

namespace scene {

/// The most rows or columns of a window: those of an image with the usual border.
inline constexpr auto longest_side = static_cast<std::int64_t>(greatest_length(3));

/// A part of a scene that has been read, as an image whose first site is (0, 0).
template <typename T>
struct window {
  rectangle place;               ///< in the scene
  image2d<T> values;             ///< all pixels
  image2d<unsigned char> valid;  ///< 0 where the scene has no data; no image if there are data everywhere

  /// No pixels.
  window() = default;
  /// The pixels of `place_`, not set. \throws std::bad_alloc
  explicit window(const rectangle& place_) : place(place_), values(domain()) {}

  /// The sites of all pixels.
  box2d domain() const { return {point2d(0, 0), site(place.end_row() - 1, place.end_col() - 1)}; }

  /// The site of a pixel of the scene. \pre the window has it.
  point2d site(std::int64_t row, std::int64_t col) const {
    return {qel::internal::narrowed<short>(row - place.row), qel::internal::narrowed<short>(col - place.col)};
  }

  /// Whether there are data at a site.
  bool has_data(const point2d& p) const { return !valid.is_valid() || valid(p) != 0; }
};

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_WINDOW_HPP

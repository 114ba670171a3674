// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_INNER_EDGES_HPP
#define QEL_SCENE_INNER_EDGES_HPP

#include <qel/scene/rectangle.hpp>

namespace qel {

namespace scene {

/// The inner edges of a window: its sides that lie inside the scene, not on the edge of it.
struct inner_edges {
  bool top = false;     ///< the scene has rows above
  bool bottom = false;  ///< the scene has rows below
  bool left = false;    ///< the scene has columns to the left
  bool right = false;   ///< the scene has columns to the right

  /// Whether the window is not the whole scene.
  bool any() const { return top || bottom || left || right; }
};

/// The sides of `window` beyond which `scene` goes on.
inline inner_edges inner_edges_of(const rectangle& window, const rectangle& scene) {
  return {window.row > scene.row, window.end_row() < scene.end_row(), window.col > scene.col,
          window.end_col() < scene.end_col()};
}

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_INNER_EDGES_HPP

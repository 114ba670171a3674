// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_COMPUTE_TOUCH_IMAGE_HPP
#define QEL_SCENE_COMPUTE_TOUCH_IMAGE_HPP

// The regions of a window that may go on beyond it.
//
// A bounding box for each node would tell, too. One truth value for each node is less, and only the sites of the edges
// are read.

#include <qel/core/box2d.hpp>
#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/data/fill.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/scene/inner_edges.hpp>

namespace qel {

namespace scene {

namespace internal {

/// Calls `visit` with every site of the inner edges of the window `b`; corners come twice.
template <typename Visit>
void for_edge_sites(const box2d& b, const inner_edges& inner, Visit visit) {
  for (int col = b.pmin_col(); col <= b.pmax_col(); ++col) {
    if (inner.top) visit(point2d(b.pmin_row(), qel::internal::narrowed<short>(col)));
    if (inner.bottom) visit(point2d(b.pmax_row(), qel::internal::narrowed<short>(col)));
  }
  for (int row = b.pmin_row(); row <= b.pmax_row(); ++row) {
    if (inner.left) visit(point2d(qel::internal::narrowed<short>(row), b.pmin_col()));
    if (inner.right) visit(point2d(qel::internal::narrowed<short>(row), b.pmax_col()));
  }
}

}  // namespace internal

/// Whether the region of each node has a site on an inner edge, as an image on the sheet of nodes.
///
/// The window is the image of the tree. Under 4- and 8-connectivity a region that has no site there has no neighbour
/// outside: it is a region of the scene. The root touches if there is an inner edge at all.
///
/// Cost: a walk along the edges and one over the nodes; one truth value for each node. \throws std::bad_alloc
template <typename T>
image2d<bool> compute_touch_image(const morpho::tree::node_tree<T>& nodes, const inner_edges& inner) {
  image2d<bool> touches(nodes.f().domain(), nodes.f().border());
  data::fill(touches, false);
  const auto& number = nodes.table().number;
  internal::for_edge_sites(number.domain(), inner, [&](const point2d& p) { touches.element(number(p)) = true; });
  morpho::tree::up_node_piter<morpho::tree::node_tree<T>> n(nodes);
  for (n.start(); n.is_valid(); n.next())
    if (touches(n)) touches(nodes.parent(n)) = true;
  return touches;
}

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_COMPUTE_TOUCH_IMAGE_HPP

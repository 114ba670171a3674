// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_COMPUTE_PROOF_IMAGE_HPP
#define QEL_SCENE_COMPUTE_PROOF_IMAGE_HPP

// Which values of a filtered window are those of the filtered scene around it.
//
// The law is for an attribute that never shrinks from a region to a greater one: area and diagonal. A region of the
// window lies in a region of the scene of the same level, so its attribute is at most the true one; if it touches no
// inner edge, the two are the same. Filter the window twice: by "reaches the threshold", and by "reaches it or touches
// an inner edge". The true node of a site is not below what the second keeps, and not above what the first keeps. Where
// both keep the same node, its value is that of the scene.
//
// The trap: a filter keeps the root of the window even if the root does not reach the threshold. The scene may go on
// there to lower levels, so what falls to such a root is in doubt although both filters agree on it, unless no value of
// the scene lies beyond that of the root.
//
// The filters need not run. Both predicates hold for all ancestors of a node for which they hold. From a node towards
// the root, the first filter stops at the first node that reaches the threshold, the second at the first that reaches
// it or touches. The two differ if and only if a node that touches and does not reach comes first. So one walk from the
// root downward proves or doubts each node. The four rules agree on such predicates: the proof is for each of them. The
// test `blocks.proof_is_where_two_filters_agree` runs the two filters.

#include <qel/core/concept/function.hpp>
#include <qel/core/image2d.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/piter.hpp>

namespace qel {

namespace scene {

/// Whether each node of a window has in the filtered window its value in the filtered scene, as an image on the sheet
/// of nodes. True for all nodes if the window is the whole scene.
///
/// Cost: one walk over the nodes; one truth value for each node.
///
/// \param nodes   the tree of the window.
/// \param reaches whether the attribute of a node reaches the threshold. \pre It holds for the parents of all nodes
///                for which it holds, and for the true region of each node for which it holds.
/// \param touches from `compute_touch_image`.
/// \param end     the value that no root goes beyond: the least value of the scene for a max-tree, the greatest for a
///                min-tree. The ends of the range of the value type always do.
/// \throws std::bad_alloc
template <typename T, typename P>
image2d<bool> compute_proof_image(const morpho::tree::node_tree<T>& nodes, const Function_v2b<P>& reaches,
                                  const image2d<bool>& touches, const typename T::value& end) {
  const P& reached = qel::internal::force_exact<P>(reaches);
  image2d<bool> proved(touches.domain(), touches.border());
  morpho::tree::dn_node_piter<morpho::tree::node_tree<T>> n(nodes);
  for (n.start(); n.is_valid(); n.next()) {
    const bool whole = nodes.is_root(n) ? !touches(n) || nodes.f()(n) == end : !touches(n) && proved(nodes.parent(n));
    proved(n) = whole || reached(n.to_site());
  }
  return proved;
}

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_COMPUTE_PROOF_IMAGE_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_MAX_HPP
#define QEL_MORPHO_TREE_FILTER_MAX_HPP

#include <qel/core/concept/function.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

/// A node of `tree` survives in `f` if it or any of its descendants passes `pred`; a removed node takes the value of
/// its parent. Only the values at nodes change.
///
/// Cost: two walks over the nodes, and one truth value of memory for each element.
///
/// \pre    `f` has the domain of the tree's image.
/// \throws std::bad_alloc
template <typename T, typename F, typename P>
void max(const T& tree, Image<F>& f, const Function_v2b<P>& pred) {
  trace::entering("qel::morpho::tree::filter::max");
  F& exact_f = qel::internal::force_exact<F>(f);
  const P& passes = qel::internal::force_exact<P>(pred);
  // True while no node of the subtree is known to pass.
  typename trait::ch_value<F, bool>::ret mark;
  initialize(mark, exact_f);
  qel::data::fill(mark, true);

  up_node_piter<T> up(tree);
  for (up.start(); up.is_valid(); up.next()) {
    if (mark(up) && !passes(up.to_site())) continue;
    mark(tree.parent(up)) = false;
    mark(up) = false;
  }

  dn_node_piter<T> dn(tree);
  for (dn.start(); dn.is_valid(); dn.next())
    if (mark(dn)) exact_f(dn) = exact_f(tree.parent(dn));
  trace::exiting("qel::morpho::tree::filter::max");
}

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_MAX_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_MIN_HPP
#define QEL_MORPHO_TREE_FILTER_MIN_HPP

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

/// A node of `tree` survives in `f` if it and all its ancestors pass `pred`; a removed node takes the value of its
/// parent. Only the values at nodes change.
///
/// Cost: one walk over the nodes, and one truth value of memory for each element.
///
/// \pre    `f` has the domain of the tree's image.
/// \throws std::bad_alloc
template <typename T, typename F, typename P>
void min(const T& tree, Image<F>& f, const Function_v2b<P>& pred) {
  trace::entering("qel::morpho::tree::filter::min");
  F& exact_f = qel::internal::force_exact<F>(f);
  const P& passes = qel::internal::force_exact<P>(pred);
  typename trait::ch_value<F, bool>::ret mark;
  initialize(mark, exact_f);
  qel::data::fill(mark, false);

  dn_node_piter<T> n(tree);
  for (n.start(); n.is_valid(); n.next()) {
    if (!mark(tree.parent(n)) && passes(n.to_site())) continue;
    exact_f(n) = exact_f(tree.parent(n));
    mark(n) = true;
  }
  trace::exiting("qel::morpho::tree::filter::min");
}

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_MIN_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_SUB_HPP
#define QEL_MORPHO_TREE_FILTER_SUB_HPP

#include <qel/core/concept/function.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/internal/wrapping.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/check_init.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

/// A node of `tree` that fails `pred` takes in `f` the value of its parent, and its whole subtree moves by the same
/// amount: differences inside the subtree stay. Only the values at nodes change.
///
/// By definition the nodes are judged from the leaves upward, and each that fails moves its subtree
/// (`propagate_to_descendants`): quadratic in the height of the tree. In the end the value of a node is its input value
/// less the sum of f(a) - f(parent(a)) over the failing nodes a among itself and its ancestors. One walk from the root
/// downward gives this: for integers the same, modulo 2^width, for floating point the same but for rounding.
///
/// Cost: one walk over the nodes, and one value of memory for each element.
///
/// \pre    `f` has the domain of the tree's image.
/// \throws std::bad_alloc
template <typename T, typename F, typename P>
void sub(const T& tree, Image<F>& f, const Function_v2b<P>& pred) {
  trace::entering("qel::morpho::tree::filter::subtractive");
  using qel::internal::difference;
  F& exact_f = qel::internal::force_exact<F>(f);
  const P& passes = qel::internal::force_exact<P>(pred);
  // How far each node has moved down: its input value less its final value.
  typename trait::concrete<F>::ret moved;
  qel::internal::check_init(&trait::concrete<F>::ret::init_);
  moved.init_(exact_f.domain(), exact_f.border());

  dn_node_piter<T> n(tree);
  for (n.start(); n.is_valid(); n.next()) {
    if (tree.is_root(n)) {
      moved(n) = 0;
      continue;
    }
    const auto before = exact_f(n);
    const auto& parent = tree.parent(n);
    exact_f(n) = passes(n.to_site()) ? difference(before, moved(parent)) : exact_f(parent);
    moved(n) = difference(before, exact_f(n));
  }
  trace::exiting("qel::morpho::tree::filter::subtractive");
}

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_SUB_HPP

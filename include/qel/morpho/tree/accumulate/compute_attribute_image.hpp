// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_COMPUTE_ATTRIBUTE_IMAGE_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_COMPUTE_ATTRIBUTE_IMAGE_HPP

// The attribute of each node of a component tree, at every site of the node.

#include <qel/accu/accumulator.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/tree/accumulate/accumulate.hpp>
#include <qel/morpho/tree/accumulate/accumulate_by_nodes.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// The image of accumulators of type A over a tree of type T.
template <typename T, typename A>
using accu_image_t = typename trait::ch_value<typename T::function, A>::ret;
/// The image of the results of A: area, length, moment or deviation at each site.
template <typename T, typename A>
using attribute_image_t = typename trait::ch_value<typename T::function, typename A::result>::ret;

namespace internal {

template <typename A, typename T, typename I>
attribute_image_t<T, A> compute_attribute_image(const A& a, const T& tree, const I& f, accu_image_t<T, A>* accu_image) {
  attribute_image_t<T, A> output;
  // Before what is needed on the way only: memory that is freed behind it leaves no holes.
  if (trace::quiet) initialize(output, f);
  // A trace shows the images of the plain form.
  if constexpr (goes_by_nodes<A, T>) {
    if (accu_image == nullptr && trace::quiet && tree.nnodes() != 0) {
      if (accumulate_by_nodes(a, tree, [&](unsigned k, const A& of_node) { output.element(k) = of_node; }))
        return output;
    }
  }

  accu_image_t<T, A> data;
  initialize(data, f);
  qel::data::fill(data, a);
  accumulate(a, tree, data);
  if (accu_image != nullptr) *accu_image = duplicate(data);

  if (!trace::quiet) initialize(output, data);
  qel::data::fill(output, data);
  return output;
}

}  // namespace internal

/// The attribute that `a` computes, for each node of `tree` with all its descendants, at every site of the node.
///
/// Cost: three walks over the sites, and an accumulator for each while it runs. On a node tree two walks at most, and
/// an accumulator for each node and the sorted sites where the order counts, or what `accumulate_by_nodes` takes.
///
/// \param a          the kind of attribute, with its settings if it has some; its content does not count.
/// \param tree       the tree of an image, or a `node_tree`: then the result is an image on the sheet of nodes.
/// \param accu_image gets a copy of the accumulators of all sites, unless it is null.
///
/// \post   `a` and `tree` are unchanged; the border of the result means nothing.
/// \throws std::bad_alloc
template <typename A, typename T>
attribute_image_t<T, A> compute_attribute_image(const Accumulator<A>& a, const T& tree,
                                                accu_image_t<T, A>* accu_image = nullptr) {
  trace::entering("morpho::tree::compute_attribute_image");
  auto output = internal::compute_attribute_image(qel::internal::force_exact<A>(a), tree, tree.f(), accu_image);
  trace::exiting("morpho::tree::compute_attribute_image");
  return output;
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_COMPUTE_ATTRIBUTE_IMAGE_HPP

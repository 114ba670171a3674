// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_BATCH_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_BATCH_HPP

// The rules for many predicates at once, on a node tree.
//
// Each function gives for each predicate what the rule of its name in `filter` gives, to the bit, and what the rule
// means stands there. One walk serves eight predicates: bit k of a node's byte is predicate k's answer. The rule passes
// the byte to children or parents and writes all eight planes on the way. Every node is asked about first, in the order
// of the numbers, also where the plain rule would not ask. Nothing is traced.
//
// Cost: one walk over the nodes for each eight predicates, two for `max`; memory for the results, and a byte a node.

#include <qel/core/internal/wrapping.hpp>
#include <qel/morpho/tree/filter/batch/failures.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

/// The rules for many predicates at once.
namespace batch {

namespace internal {

using filter::internal::failure_bits;

/// Calls `visit(node, parent)` with the numbers of each node and its parent (a root is its own), nodes before parents.
template <typename T, typename Visit>
void for_each_upward(const node_tree<T>& nodes, Visit visit) {
  using tree::internal::node_sheet;
  const auto& upward = nodes.nodes().vect_;
  for (std::size_t i = 0; i < upward.size(); ++i)
    visit(node_sheet::number(upward[i]), node_sheet::number(nodes.parent(upward[i])));
}

/// The same, with each node after its parent.
template <typename T, typename Visit>
void for_each_downward(const node_tree<T>& nodes, Visit visit) {
  using tree::internal::node_sheet;
  const auto& upward = nodes.nodes().vect_;
  for (std::size_t i = upward.size(); i-- > 0;)
    visit(node_sheet::number(upward[i]), node_sheet::number(nodes.parent(upward[i])));
}

/// The node values of some planes, written node by node, parents first. A root keeps its value.
template <typename T>
class planes {
 public:
  using value = typename node_tree<T>::value;
  using function = typename node_tree<T>::function;

  /// `n` planes, not set. \throws std::bad_alloc
  planes(const node_tree<T>& nodes, std::size_t n) : input_(nodes.f().buffer()), n_(n) {
    images_.reserve(n);
    for (std::size_t k = 0; k < n; ++k) {
      images_.emplace_back();
      images_.back().init_(nodes.f().domain(), 0);
      plane_[k] = images_.back().buffer();
    }
  }

  /// Gives `node` the value of its parent in the planes whose bits are set, and its own in the others.
  void replace(unsigned node, unsigned parent, failure_bits removed) {
    const value own = input_[node];
    if (node == parent) return keep(node);
    for (std::size_t k = 0; k < n_; ++k) plane_[k][node] = (removed >> k & 1) != 0 ? plane_[k][parent] : own;
  }

  /// The same, but in the others `node` moves as far as its parent has.
  void replace_or_shift(unsigned node, unsigned parent, failure_bits removed) {
    using qel::internal::difference;
    const value own = input_[node];
    const value own_of_parent = input_[parent];
    if (node == parent) return keep(node);
    for (std::size_t k = 0; k < n_; ++k) {
      const value above = plane_[k][parent];
      // A root that is infinite has not moved either.
      const value moved = above == own_of_parent ? value() : difference(own_of_parent, above);
      plane_[k][node] = (removed >> k & 1) != 0 ? above : difference(own, moved);
    }
  }

  const std::vector<function>& images() const { return images_; }

 private:
  void keep(unsigned node) {
    for (std::size_t k = 0; k < n_; ++k) plane_[k][node] = input_[node];
  }

  const value* input_;
  std::size_t n_;
  std::array<value*, filter::internal::most_predicates> plane_;
  std::vector<function> images_;
};

/// The planes of all predicates from `first` to `last`; `write(planes, failures)` fills up to eight.
template <typename T, typename P, typename Write>
std::vector<typename node_tree<T>::function> in_batches(const node_tree<T>& nodes, const P* first, const P* last,
                                                        Write write) {
  std::vector<typename node_tree<T>::function> result;
  while (first != last) {
    const auto n = std::min(static_cast<std::size_t>(last - first), filter::internal::most_predicates);
    planes<T> batch(nodes, n);
    std::vector<failure_bits> failures = filter::internal::failures(nodes.nnodes(), first, n);
    write(batch, failures.data());
    result.insert(result.end(), batch.images().begin(), batch.images().end());
    first += n;
  }
  return result;
}

}  // namespace internal

/// `filter::min` by each predicate from `first` to `last`: the node values, as images on the sheet of nodes.
/// \throws std::bad_alloc and what the predicates throw.
template <typename T, typename P>
std::vector<typename node_tree<T>::function> min(const node_tree<T>& nodes, const P* first, const P* last) {
  return internal::in_batches(nodes, first, last, [&](auto& planes, internal::failure_bits* failed) {
    internal::for_each_downward(nodes, [=, &planes](unsigned node, unsigned parent) {
      failed[node] |= failed[parent];
      planes.replace(node, parent, failed[node]);
    });
  });
}

/// `filter::max` by each predicate from `first` to `last`: the node values, as images on the sheet of nodes.
/// \throws std::bad_alloc and what the predicates throw.
template <typename T, typename P>
std::vector<typename node_tree<T>::function> max(const node_tree<T>& nodes, const P* first, const P* last) {
  return internal::in_batches(nodes, first, last, [&](auto& planes, internal::failure_bits* failed) {
    internal::for_each_upward(nodes, [=](unsigned node, unsigned parent) { failed[parent] &= failed[node]; });
    internal::for_each_downward(
        nodes, [=, &planes](unsigned node, unsigned parent) { planes.replace(node, parent, failed[node]); });
  });
}

/// `filter::direct` by each predicate from `first` to `last`: the node values, as images on the sheet of nodes.
/// \throws std::bad_alloc and what the predicates throw.
template <typename T, typename P>
std::vector<typename node_tree<T>::function> direct(const node_tree<T>& nodes, const P* first, const P* last) {
  return internal::in_batches(nodes, first, last, [&](auto& planes, const internal::failure_bits* failed) {
    internal::for_each_downward(
        nodes, [=, &planes](unsigned node, unsigned parent) { planes.replace(node, parent, failed[node]); });
  });
}

/// `filter::sub` by each predicate from `first` to `last`: the node values, as images on the sheet of nodes.
/// \throws std::bad_alloc and what the predicates throw.
template <typename T, typename P>
std::vector<typename node_tree<T>::function> sub(const node_tree<T>& nodes, const P* first, const P* last) {
  return internal::in_batches(nodes, first, last, [&](auto& planes, const internal::failure_bits* failed) {
    internal::for_each_downward(
        nodes, [=, &planes](unsigned node, unsigned parent) { planes.replace_or_shift(node, parent, failed[node]); });
  });
}

}  // namespace batch

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_BATCH_HPP

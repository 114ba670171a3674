// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_FILTER_EACH_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_FILTER_EACH_HPP

#include <qel/data/duplicate.hpp>
#include <qel/fun/predicate.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/trace/trace.hpp>

#include <type_traits>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether rules of type Rule have a `batch` for predicates of type P.
template <typename Rule, typename Nodes, typename P, typename = void>
inline constexpr bool has_batch = false;
template <typename Rule, typename Nodes, typename P>
inline constexpr bool
    has_batch<Rule, Nodes, P,
              std::void_t<decltype(std::declval<const Rule&>().batch(
                  std::declval<const Nodes&>(), std::declval<const P*>(), std::declval<const P*>()))>> = true;

}  // namespace internal

/// Filters the nodes once for each predicate from `first` to `last`: their values, as images on the sheet of nodes.
///
/// \param rule called as `rule(nodes, values, predicate)`, with a copy of the node values. If it has
///             `rule.batch(nodes, first, last)`, which gives all results at once, that is called instead, unless it is
///             traced: an outline shows one predicate after the other.
/// \throws std::bad_alloc and what the rule throws.
template <typename T, typename P, typename Rule>
std::vector<typename node_tree<T>::function> filter_each(const node_tree<T>& nodes, const P* first, const P* last,
                                                         const Rule& rule) {
  if constexpr (internal::has_batch<Rule, node_tree<T>, P>)
    if (trace::quiet) return rule.batch(nodes, first, last);
  std::vector<typename node_tree<T>::function> values;
  for (; first != last; ++first) {
    values.push_back(duplicate(nodes.f()));
    rule(nodes, values.back(), fun::predicate(*first));
  }
  return values;
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_FILTER_EACH_HPP

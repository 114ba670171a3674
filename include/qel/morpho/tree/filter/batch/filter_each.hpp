// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_FILTER_EACH_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_FILTER_EACH_HPP

#include <qel/data/duplicate.hpp>
#include <qel/fun/predicate.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/trace/trace.hpp>

#include <cstddef>
#include <type_traits>
#include <utility>

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

/// Filters the nodes once for each predicate from `first` to `last`: their values.
///
/// \param rule called as `rule(nodes, values, predicate)`, with a copy of the node values. If it has
///             `rule.batch(nodes, first, last)`, which gives all results at once, that is called instead, unless it is
///             traced: an outline shows one predicate after the other.
/// \pre    there are at most `most_planes` predicates.
/// \throws std::bad_alloc and what the rule throws.
template <typename T, typename P, typename Rule>
plane_values<typename node_tree<T>::value> filter_each(const node_tree<T>& nodes, const P* first, const P* last,
                                                       const Rule& rule) {
  if constexpr (internal::has_batch<Rule, node_tree<T>, P>)
    if (trace::quiet) return rule.batch(nodes, first, last);
  plane_values<typename node_tree<T>::value> result(nodes.nnodes(), static_cast<std::size_t>(last - first));
  for (std::size_t plane = 0; first != last; ++first, ++plane) {
    auto values = duplicate(nodes.f());
    rule(nodes, values, fun::predicate(*first));
    for (unsigned k = 0; k < nodes.nnodes(); ++k) result.of(k)[plane] = values.element(k);
  }
  return result;
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_FILTER_EACH_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_WAITING_NODES_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_WAITING_NODES_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/data/sort/radix_sort.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether an `order_key` has room for values of type V.
template <typename V>
inline constexpr bool fits_order_key = std::is_integral_v<V> && sizeof(V) <= 4;

/// The place of a node among the children of its parent: least for the one that the sweep hands on first. Value and
/// position in one number, turned round as the sweep goes. \pre `fits_order_key<V>`.
template <typename V, typename P>
std::uint64_t order_key(const sweep_order& order, const V& value, const P& canonical) {
  using limits = std::numeric_limits<V>;
  const auto number = [](V v) { return static_cast<unsigned>(v); };
  const unsigned distance =
      order.increasing ? number(limits::max()) - number(value) : number(value) - number(limits::min());
  const unsigned position =
      (static_cast<unsigned>(canonical.row()) + 0x8000u) << 16 | (static_cast<unsigned>(canonical.col()) + 0x8000u);
  return std::uint64_t{distance} << 32 | (order.raster_ties ? ~position : position);
}

/// Nodes whose accumulators of type A are complete and wait for that of their parent. Where each node comes right after
/// what is below it, as a flood lists them, the children of the next one stand on top.
template <typename A>
class waiting_nodes {
 public:
  struct node {
    std::uint64_t key;  ///< `order_key`
    unsigned parent;    ///< its number
    A content;
  };

  /// Room for `most` nodes from the start: a stack that grows by doubling leaves holes of its own size. Linux backs only
  /// what is written; Windows commits all of it. \throws std::bad_alloc
  explicit waiting_nodes(std::size_t most) : sorted_(few) { nodes_.reserve(most); }

  unsigned size() const { return qel::internal::narrowed<unsigned>(nodes_.size()) + (has_last_ ? 1 : 0); }

  /// Puts `n` on top. \pre fewer than `most` nodes wait.
  [[gnu::always_inline]] void enter(const node& n) {
    last_ = n;
    has_last_ = true;
  }

  /// Calls `visit(accumulator)` for the topmost nodes that have the parent `k`, in the order of their keys, and removes
  /// them. Cost: that of sorting them. \throws std::bad_alloc
  template <typename Visit>
  [[gnu::always_inline]] void leave(unsigned k, Visit visit) {
    if (!has_last_) return;
    has_last_ = false;
    if (last_.parent != k) return nodes_.push_back(last_);
    if (nodes_.empty() || nodes_.back().parent != k) return visit(last_.content);
    nodes_.push_back(last_);
    std::size_t n = 2;
    while (n < nodes_.size() && nodes_[nodes_.size() - n - 1].parent == k) ++n;
    visit_sorted(nodes_.data() + (nodes_.size() - n), n, visit);
    nodes_.resize(nodes_.size() - n);
  }

 private:
  static constexpr std::size_t few = 16;

  template <typename Visit>
  void visit_sorted(const node* first, std::size_t n, Visit visit) {
    if (n > sorted_.size()) sorted_.resize(std::max(n, 2 * sorted_.size()));
    for (std::size_t i = 0; i < n; ++i) insert(first, qel::internal::narrowed<unsigned>(i));
    if (n > few) sort_by_bytes(first, n);
    for (std::size_t i = 0; i < n; ++i) visit(first[sorted_[i]].content);
  }

  /// Sorts the numbers of `n` nodes, without comparing: by each byte in which their keys differ, the lowest first.
  void sort_by_bytes(const node* first, std::size_t n) {
    spare_.resize(sorted_.size());
    std::uint64_t bits = 0;
    for (std::size_t i = 1; i < n; ++i) bits |= first[i].key ^ first[0].key;
    for (unsigned shift = 0; shift < 64; shift += 8) {
      if ((bits >> shift & 0xff) == 0) continue;
      qel::data::internal::radix_digit<std::uint64_t> byte(shift, 8);
      for (std::size_t i = 0; i < n; ++i) ++byte.places[byte.of(first[i].key)];
      byte.counts_to_places();
      for (std::size_t i = 0; i < n; ++i) spare_[byte.take_place(first[sorted_[i]].key)] = sorted_[i];
      sorted_.swap(spare_);
    }
  }

  /// Adds the number `i` to those before it, in order while they are few: most nodes have one or two children.
  void insert(const node* first, unsigned i) {
    unsigned* to = sorted_.data() + i;
    if (i < few)
      for (; to != sorted_.data() && first[i].key < first[to[-1]].key; --to) *to = to[-1];
    *to = i;
  }

  std::vector<node> nodes_;  ///< all but the topmost
  node last_{};              ///< the topmost, which mostly is the only child of the next
  bool has_last_ = false;
  std::vector<unsigned> sorted_;  ///< numbers among the children of a node: less memory than keys and addresses
  std::vector<unsigned> spare_;   ///< for `sort_by_bytes`
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_WAITING_NODES_HPP

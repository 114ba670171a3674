// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_OWN_SITES_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_OWN_SITES_HPP

#include <qel/core/image2d.hpp>
#include <qel/morpho/tree/node_tree.hpp>

#include <numeric>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Calls `visit(first site, numbers, n)` for each row: `numbers` are those of the nodes of its `n` sites.
template <typename T, typename Visit>
void for_each_row(const node_tree<T>& tree, Visit visit) {
  const image2d<unsigned>& number = tree.table().number;
  typename T::site p = number.domain().pmin();
  for (unsigned i = 0; i < number.domain().len(0); ++i, ++p.row()) visit(p, &number(p), number.domain().len(1));
}

/// How many sites each node has of its own, without those of its descendants.
template <typename T>
class own_site_counts {
 public:
  /// Cost: one pass over the sites. \throws std::bad_alloc
  explicit own_site_counts(const node_tree<T>& tree) : counts_(tree.nnodes()) {
    for_each_row(tree, [this](const typename T::site&, const unsigned* numbers, unsigned n) {
      for (unsigned i = 0; i < n; ++i) ++counts_[numbers[i]];
    });
  }

  /// The count of node number `k`: at least 1.
  unsigned count(unsigned k) const { return counts_[k]; }

  /// Moves all counts out of this object.
  std::vector<unsigned> take() { return std::move(counts_); }

 private:
  std::vector<unsigned> counts_;
};

/// The sites of each node without those of its descendants, in raster order: one block for all, by node number.
template <typename T>
class own_sites {
 public:
  using site = typename T::site;

  /// Cost: two passes over the sites. \throws std::bad_alloc
  explicit own_sites(const node_tree<T>& tree) {
    ends_ = own_site_counts<T>(tree).take();
    std::exclusive_scan(ends_.begin(), ends_.end(), ends_.begin(), 0u);
    sites_.init_(tree.table().number.domain(), 0);
    for_each_row(tree, [this](site p, const unsigned* numbers, unsigned n) {
      // The writes jump about: fetch ahead.
      constexpr unsigned ahead = 24;
      for (unsigned i = 0; i < n; ++i, ++p.col()) {
        if (n - i > ahead) __builtin_prefetch(&sites_.element(ends_[numbers[i + ahead]]), 1);
        sites_.element(ends_[numbers[i]]++) = p;
      }
    });
  }

  /// The first site of node number `k`.
  const site* begin(unsigned k) const { return sites_.buffer() + (k == 0 ? 0 : ends_[k - 1]); }

  /// Behind its last site.
  const site* end(unsigned k) const { return sites_.buffer() + ends_[k]; }

 private:
  std::vector<unsigned> ends_;
  image2d<site> sites_;  // a plain block of sites, of which no element is set first
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_OWN_SITES_HPP

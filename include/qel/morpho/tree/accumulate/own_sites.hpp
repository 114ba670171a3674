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
    places_.init_(tree.table().number.domain(), 0);
    for_each_row(tree, [this](site p, const unsigned* numbers, unsigned n) {
      // The writes jump about: fetch ahead.
      constexpr unsigned ahead = 24;
      for (unsigned i = 0; i < n; ++i, ++p.col()) {
        if (n - i > ahead) __builtin_prefetch(&places_.element(ends_[numbers[i + ahead]]), 1);
        places_.element(ends_[numbers[i]]++) = packed(p);
      }
    });
  }

  /// How many sites node number `k` has: at least 1.
  unsigned count(unsigned k) const { return ends_[k] - begin(k); }

  /// Calls `visit(site)` for the sites of node number `k` but the canonical one, in the reverse of the sweep order, as
  /// the walk of the definition does. The canonical site is the first in raster order, or the last one where ties stand
  /// against it.
  template <typename Visit>
  void for_each_other(unsigned k, bool raster_ties, Visit visit) const {
    const unsigned* first = places_.buffer() + begin(k);
    const unsigned* last = places_.buffer() + ends_[k] - 1;
    if (raster_ties)
      for (; last != first; --last) visit(unpacked(*last));
    else
      for (; first != last; ++first) visit(unpacked(*first));
  }

 private:
  /// Row and column in one number: one store in place of two.
  static unsigned packed(const site& p) {
    return static_cast<unsigned>(p.row()) << 16 | static_cast<unsigned short>(p.col());
  }

  static site unpacked(unsigned place) { return site(static_cast<short>(place >> 16), static_cast<short>(place)); }

  unsigned begin(unsigned k) const { return k == 0 ? 0 : ends_[k - 1]; }

  std::vector<unsigned> ends_;
  image2d<unsigned> places_;  // a plain block, of which no element is set first
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_OWN_SITES_HPP

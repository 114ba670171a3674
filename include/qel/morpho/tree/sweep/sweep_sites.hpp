// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_SWEEP_SITES_HPP
#define QEL_MORPHO_TREE_SWEEP_SWEEP_SITES_HPP

// The sites of an image in sweep order. The plain form is the array of `data::sort_psites_increasing` or `_decreasing`.
// The fast form, `sweep_sites`, knows the order and makes the array only for a reader of sites, which a profile mostly
// lacks. The test `component_tree.nodes_alone_have_the_attributes_of_the_whole_tree` holds trees and attributes of both
// equal.

#include <qel/core/concept/site_set.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/site_set/p_indexed_piter.hpp>
#include <qel/core/site_set/p_indexed_psite.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>
#include <qel/trace/trace.hpp>

#include <algorithm>
#include <type_traits>

namespace qel {

namespace morpho {

namespace tree {

/// The sites of an image of type I in the sweep order of its min-tree or max-tree. The first read of a site sorts them.
///
/// With integers of 16 bits or less, few different ones, or mostly others less than 2^32 apart, the flood needs the
/// order only. So do accumulators of integers of 32 bits or less of a `node_tree` on an `image2d`, unless very many
/// nodes wait (`accumulate_by_nodes`). With tracing on the sites are sorted at once, where the outline of the definition
/// has it.
///
/// The image is only referred to: keep it alive and unchanged.
template <typename I>
class sweep_sites : public Site_Set<sweep_sites<I>> {
 public:
  /// A site as it is stored.
  using site = point2d;
  /// A position in the array, with the site found there.
  using psite = p_indexed_psite<sweep_sites>;
  /// The walk in the order of the array.
  using fwd_piter = p_indexed_fwd_piter<sweep_sites>;
  /// The walk from the last site to the first.
  using bkd_piter = p_indexed_bkd_piter<sweep_sites>;

  /// \param increasing whether values ascend, for a max-tree, or descend, for a min-tree.
  /// \pre as for the sorts: `data::sort_psites_increasing`.
  sweep_sites(const I& f, bool increasing) : f_(f), increasing_(increasing) {
    if (!trace::quiet) array();
  }

  /// Not copied: it refers to the image.
  sweep_sites(const sweep_sites&) = delete;
  /// Not assigned.
  sweep_sites& operator=(const sweep_sites&) = delete;

  /// Turns to the other direction: the sites read so far are no longer valid. For all but 8-bit integers one array is
  /// the mirror of the other: an array made before is turned round, in one pass and no new memory. For 8 bits it is
  /// released. With tracing on the sites are sorted anew, as in the outline of the definition.
  /// \throws std::bad_alloc with tracing on.
  void turn() {
    increasing_ = !increasing_;
    if (trace::quiet && is_mirrored())
      std::reverse(array_.vect_.begin(), array_.vect_.end());
    else
      array_ = p_array2d();
    if (!trace::quiet) array();
  }

  /// The sorted sites. Cost of the first call: that of the sort, and 4 bytes a site.
  /// \throws std::bad_alloc at the first call.
  const p_array2d& array() const {
    if (array_.nsites() == 0)
      array_ = increasing_ ? qel::data::sort_psites_increasing(f_) : qel::data::sort_psites_decreasing(f_);
    return array_;
  }

  /// Number of sites.
  unsigned nsites() const { return f_.domain().nsites(); }

  /// Whether the index of `q` is that of a site; the site of `q` plays no part.
  bool has(const psite& q) const { return q.index() >= 0 && static_cast<unsigned>(q.index()) < nsites(); }

  /// Site number `i`. See `array()`. \pre `i < nsites()`.
  const site& operator[](unsigned i) const { return array()[i]; }

  /// Always true.
  bool is_valid() const { return true; }

  /// The order, without reading a site.
  internal::sweep_order order() const { return {increasing_, increasing_ || !is_mirrored()}; }

  /// What a flood asks.
  friend auto order_of(const I&, const sweep_sites& s) { return s.order(); }

  /// What a loop over the sites reads.
  friend const p_array2d& stored_sites(const sweep_sites& s) { return s.array(); }

 private:
  /// Whether one array is the exact mirror of the other, ties included.
  static constexpr bool is_mirrored() {
    return std::is_same_v<typename trait::image_<I>::quant, trait::image::quant::high>;
  }

  const I& f_;
  bool increasing_;
  mutable p_array2d array_;
};

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_SWEEP_SITES_HPP

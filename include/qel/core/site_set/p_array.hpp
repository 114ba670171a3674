// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_SITE_SET_P_ARRAY_HPP
#define QEL_CORE_SITE_SET_P_ARRAY_HPP

#include <qel/core/concept/site_set.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/site_set/p_indexed_psite.hpp>

#include <cstddef>
#include <utility>
#include <vector>

namespace qel {

template <typename S>
struct p_indexed_fwd_piter;
template <typename S>
struct p_indexed_bkd_piter;

/// Sites in any order, repeated ones too. A copy copies all sites.
template <typename P>
struct p_array : Site_Set<p_array<P>> {
  /// A site as it is stored.
  using site = P;
  /// A position in the array, with the site found there.
  using psite = p_indexed_psite<p_array>;
  /// The walk in the order of the array.
  using fwd_piter = p_indexed_fwd_piter<p_array>;
  /// The walk from the last site to the first.
  using bkd_piter = p_indexed_bkd_piter<p_array>;

  /// No sites.
  p_array() = default;

  /// The sites of `vect`, in its order.
  explicit p_array(std::vector<P> vect) : vect_(std::move(vect)) {}

  /// Appends `p`. \throws std::bad_alloc
  void insert(const P& p) { vect_.push_back(p); }

  /// Number of sites, reduced to 32 bits.
  unsigned nsites() const { return internal::narrowed<unsigned>(vect_.size()); }

  /// Whether the index of `q` is that of a site; the site of `q` plays no part.
  bool has(const psite& q) const { return q.index() >= 0 && static_cast<unsigned>(q.index()) < nsites(); }

  /// Site number `i`. \pre `i < nsites()`.
  const P& operator[](unsigned i) const { return vect_[i]; }

  /// Removes all sites and keeps the memory.
  void clear() { vect_.clear(); }

  /// Always true, also without sites.
  bool is_valid() const { return true; }

  /// Bytes: the object and its sites.
  std::size_t memory_size() const { return sizeof(*this) + std::size_t{nsites()} * sizeof(P); }

  /// The sites themselves; the sorts work on them in place.
  std::vector<P> vect_;
};

/// An array of sites of the plane.
using p_array2d = p_array<point2d>;

}  // namespace qel

#endif  // QEL_CORE_SITE_SET_P_ARRAY_HPP

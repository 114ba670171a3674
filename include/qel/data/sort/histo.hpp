// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_SORT_HISTO_HPP
#define QEL_DATA_SORT_HISTO_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/value_set.hpp>
#include <qel/data/fill/fwd_pixter2d.hpp>
#include <qel/trace/trace.hpp>

#include <vector>

namespace qel {

/// Counts of values.
namespace histo {

/// A counter for each value of T, an 8-bit integer type or `bool`.
template <typename T>
class array {
 public:
  /// All counts are 0.
  array() : vset_(value::set<T>::the()), h_(vset_.nvalues(), 0u) {}

  /// The values that have a counter.
  const value::set<T>& vset() const { return vset_; }

  /// The count of the value `v`.
  unsigned operator()(const T& v) const { return h_[vset_.index_of(v)]; }
  /// The same, to count.
  unsigned& operator()(const T& v) { return h_[vset_.index_of(v)]; }

  /// The count of the value of index `i`. \pre `i < vset().nvalues()`.
  unsigned operator[](unsigned i) const { return h_[i]; }

  /// All counts, by the index of the value.
  const std::vector<unsigned>& vect() const { return h_; }

 private:
  const value::set<T>& vset_;
  std::vector<unsigned> h_;
};

/// How many sites of an image's domain have each value; the border is not counted. Cost: one pass.
///
/// \pre    the domain has sites.
/// \throws std::bad_alloc
template <typename I>
array<typename I::value> compute(const Image<I>& ima) {
  trace::entering("histo::compute");
  array<typename I::value> h;
  fwd_pixter2d<const I> p(internal::force_exact<I>(ima));
  for (p.start(); p.is_valid(); p.next()) ++h(p.val());
  trace::exiting("histo::compute");
  return h;
}

}  // namespace histo

}  // namespace qel

#endif  // QEL_DATA_SORT_HISTO_HPP

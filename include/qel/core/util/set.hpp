// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_UTIL_SET_HPP
#define QEL_CORE_UTIL_SET_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/util/ord.hpp>

#include <set>
#include <vector>

namespace qel {

namespace util {

/// A set with two forms: a tree while it is filled, a sorted array once it is read by index.
///
/// The tree drops duplicates and sorts; the array reads fast. To go from one form to the other does not change the
/// value, so a read of a constant set may do it: threads may share a set only once it is frozen.
template <typename T>
class set {
 public:
  /// Adds `elt`, unless it is there already; a frozen set goes back to its tree.
  void insert(const T& elt) {
    if (frozen_) unfreeze_();
    s_.insert(elt);
  }

  /// Removes all elements; the set has its tree form then.
  void clear() {
    v_.clear();
    s_.clear();
    frozen_ = false;
  }

  /// Number of elements; changes no form.
  unsigned nelements() const { return internal::narrowed<unsigned>(frozen_ ? v_.size() : s_.size()); }

  /// Element number `i` in ascending order; freezes the set. \pre `i < nelements()`.
  const T& operator[](unsigned i) const { return vect()[i]; }

  /// All elements in ascending order; freezes the set.
  const std::vector<T>& vect() const {
    if (!frozen_) freeze_();
    return v_;
  }

  /// Whether `elt` is an element, by bisection or by a search in the tree; changes no form.
  bool has(const T& elt) const {
    if (!frozen_) return s_.find(elt) != s_.end();
    const unsigned n = nelements();
    if (n == 0 || ord_strict(elt, v_[0]) || ord_strict(v_[n - 1], elt)) return false;
    return v_[dicho_(elt, 0, n)] == elt;
  }

  /// Index of the last element not greater than `elt` among [i_min, i_max).
  /// \pre the set is frozen and `elt` is not smaller than element `i_min`.
  unsigned dicho_(const T& elt, unsigned i_min, unsigned i_max) const {
    while (i_max - i_min >= 2) {
      const unsigned i = (i_min + i_max) / 2;
      (ord_strict(elt, v_[i]) ? i_max : i_min) = i;
    }
    return i_min;
  }

  /// From the tree to the sorted array. \pre the set is not frozen: the elements would be lost.
  void freeze_() const {
    v_.assign(s_.begin(), s_.end());
    s_.clear();
    frozen_ = true;
  }

  /// From the sorted array back to the tree.
  void unfreeze_() const {
    s_.insert(v_.begin(), v_.end());
    v_.clear();
    frozen_ = false;
  }

  /// Whether the elements are in the sorted array.
  bool is_frozen() const { return frozen_; }

 private:
  mutable std::vector<T> v_;
  mutable std::set<T, ord<T>> s_;
  mutable bool frozen_ = false;
};

/// Whether two sets have the same elements; freezes both, unless their sizes tell already.
template <typename T>
bool operator==(const set<T>& a, const set<T>& b) {
  if (a.nelements() != b.nelements()) return false;
  return a.nelements() == 0 || a.vect() == b.vect();
}

}  // namespace util

}  // namespace qel

#endif  // QEL_CORE_UTIL_SET_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_VALUE_SET_HPP
#define QEL_CORE_VALUE_SET_HPP

// The set of all values of a type, as an object.

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/trait_image.hpp>

#include <limits>
#include <type_traits>

namespace qel {

/// Sets of values.
namespace value {

template <typename T>
struct set;

namespace internal {

/// What a set of values offers when its values can be counted: 8-bit integers and truth values. Empty otherwise.
template <typename T, typename E, typename = void>
struct iterable_set {};

/// The values of an 8-bit integer type in ascending order, numbered from 0.
template <typename T, typename E>
struct iterable_set<T, E, std::enable_if_t<qel::internal::has_low_quant<T>>> {
  unsigned nvalues() const { return 256; }

  T operator[](unsigned i) const {
    return qel::internal::narrowed<T>(static_cast<int>(i) + std::numeric_limits<T>::min());
  }

  bool has(const T&) const { return true; }

  unsigned index_of(const T& v) const { return static_cast<unsigned>(v - std::numeric_limits<T>::min()); }
};

template <typename E>
struct iterable_set<bool, E> {
  unsigned nvalues() const { return 2; }
  bool operator[](unsigned i) const { return i != 0; }
  bool has(const bool&) const { return true; }
  unsigned index_of(const bool& v) const { return v ? 1 : 0; }
};

}  // namespace internal

/// All values of T; one object without data for each T.
///
/// The 8-bit integers and `bool` can be counted, and are numbered in ascending order: `nvalues()` is 256 or 2, `set[i]`
/// the value of index i, `index_of(v)` the index of a value. Other types have none of these.
template <typename T>
struct set : internal::iterable_set<T, set<T>> {
  /// A member.
  using value = T;

  /// The one object: it has no data, so all images and histograms share it.
  static const set& the() {
    static const set one;
    return one;
  }
};

}  // namespace value

}  // namespace qel

#endif  // QEL_CORE_VALUE_SET_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_STAT_VARIANCE_HPP
#define QEL_ACCU_STAT_VARIANCE_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/core/internal/wrapping.hpp>

namespace qel {

namespace accu {

/// Accumulators of values.
namespace stat {

/// Population variance of a set of integers T: the mean of the squares less the square of the mean, with sums
/// kept in S and the result given in R.
///
/// Each square is formed in the integer type that T promotes to and wraps there, from 46341 on for `unsigned short` and
/// `int`, from 65536 on for `unsigned`: a variance of large values can be negative. Rounding can make one of nearly
/// equal values negative. Nothing is clamped.
template <typename T, typename S, typename R>
struct variance : accu::internal::base<R, variance<T, S, R>> {
  /// A grey level.
  using argument = T;

  /// Back to no values.
  void init() { *this = variance(); }

  /// Adds a value and its square.
  void take(const T& t) {
    ++count_;
    sum_ += static_cast<S>(t);
    sum2_ += static_cast<S>(qel::internal::wrapping_square(t));
  }

  /// Adds the sums of `other`.
  void take(const variance& other) {
    count_ += other.count_;
    sum_ += other.sum_;
    sum2_ += other.sum2_;
  }

  /// 0 for an empty accumulator.
  R to_result() const {
    if (count_ == 0) return R(0);
    const auto n = static_cast<S>(count_);
    const S mean = sum_ / n;
    return static_cast<R>(sum2_ / n - mean * mean);
  }

  /// Whether a value has been taken.
  bool is_valid() const { return count_ != 0; }

 private:
  unsigned count_ = 0;
  S sum_ = S(0);
  S sum2_ = S(0);
};

}  // namespace stat

}  // namespace accu

}  // namespace qel

#endif  // QEL_ACCU_STAT_VARIANCE_HPP

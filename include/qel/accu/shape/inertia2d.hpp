// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_SHAPE_INERTIA2D_HPP
#define QEL_ACCU_SHAPE_INERTIA2D_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/core/internal/narrowed.hpp>

namespace qel {

namespace accu {

namespace shape {

/// Moment of inertia of a set of sites: (mu20 + mu02) / m^2, with m the number of sites, mu20 and mu02 the second
/// central moments of the row and column coordinates. It does not grow with scale: about 1 / (2 pi) for a disc, more
/// for anything elongated, 0 for one site.
///
/// The moments come from raw sums, sum(x^2) - sum(x)^2 / m: one pass, and two accumulators merge by adding their
/// fields. The sums are `float`: the order of the additions is part of the result. A large component loses low digits,
/// a small one far from the origin more than that: rows 0 to 2 of column 4791 give -0.67 in place of 0.22. Nothing is
/// clamped.
template <typename P>
struct inertia2d : accu::internal::base<float, inertia2d<P>> {
  /// A site.
  using argument = P;

  /// Back to no sites.
  void init() { *this = inertia2d(); }

  /// Adds a site. Each sum is exact up to 2^24, which sums of squares pass soon.
  void take(const P& p) {
    ++count_;
    for (unsigned i = 0; i < 2; ++i) {
      const auto x = static_cast<float>(p[i]);
      sum_[i] += x;
      sum2_[i] += x * x;
    }
  }

  /// Adds the sums of `other`. \pre no site is in both.
  void take(const inertia2d& other) {
    count_ += other.count_;
    for (unsigned i = 0; i < 2; ++i) {
      sum_[i] += other.sum_[i];
      sum2_[i] += other.sum2_[i];
    }
  }

  /// NaN for an empty accumulator.
  float to_result() const {
    const float moments = 0.0f + central_moment(0) + central_moment(1);
    const auto n = static_cast<double>(count_);
    return qel::internal::narrowed<float>(static_cast<double>(moments) / (n * n));
  }

  /// Always true, also for an empty accumulator.
  bool is_valid() const { return true; }

 private:
  float central_moment(unsigned i) const { return sum2_[i] - sum_[i] * sum_[i] / static_cast<float>(count_); }

  unsigned count_ = 0;
  float sum_[2] = {0.0f, 0.0f};   ///< sums of the row and of the column coordinates
  float sum2_[2] = {0.0f, 0.0f};  ///< sums of their squares
};

}  // namespace shape

}  // namespace accu

}  // namespace qel

#endif  // QEL_ACCU_SHAPE_INERTIA2D_HPP

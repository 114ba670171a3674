// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_DEVIATION_HPP
#define QEL_MORPHO_ATTRIBUTE_DEVIATION_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/accu/stat/variance.hpp>
#include <qel/accu/trait_accumulator.hpp>

#include <cmath>

namespace qel {

namespace morpho {

namespace attribute {

/// Standard deviation of the image values in a component, in grey levels: the square root of `accu::stat::variance`.
///
/// NaN where rounding or wrapped squares make the variance negative; 0 for an empty accumulator.
template <typename I, typename S, typename R>
struct deviation : accu::internal::base<R, deviation<I, S, R>> {
  /// A grey level.
  using argument = typename I::value;

  /// Back to no values.
  void init() { variance_.init(); }

  /// Adds a value.
  void take(const argument& v) {
    if (variance_.is_valid())
      variance_.take(v);
    else
      variance_.take_as_init(v);
  }

  /// Adds the values of `other`.
  void take(const deviation& other) { variance_.take(other.variance_); }

  /// The deviation of the whole population, in grey levels.
  R to_result() const { return std::sqrt(variance_.to_result()); }

  /// Whether a value has been taken.
  bool is_valid() const { return variance_.is_valid(); }

 private:
  accu::stat::variance<argument, S, R> variance_;
};

}  // namespace attribute

}  // namespace morpho

namespace trait {

/// The properties of the attribute.
template <typename I, typename S, typename R>
struct accumulator_<morpho::attribute::deviation<I, S, R>> {
  /// It takes values.
  using when_pix = accumulator::when_pix::use_v;
  /// Sums are rounded.
  using order = accumulator::order::fixed;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_DEVIATION_HPP

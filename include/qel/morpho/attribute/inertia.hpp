// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_INERTIA_HPP
#define QEL_MORPHO_ATTRIBUTE_INERTIA_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/accu/shape/inertia2d.hpp>
#include <qel/accu/trait_accumulator.hpp>

namespace qel {

namespace morpho {

namespace attribute {

/// Moment of inertia of a component, without unit: `accu::shape::inertia2d` has the formula and its precision.
template <typename I>
struct inertia : accu::internal::base<float, inertia<I>> {
  /// A site.
  using argument = typename I::psite;

  /// Back to no sites.
  void init() { inertia_.init(); }
  /// Adds a site.
  void take(const argument& p) { inertia_.take(p); }
  /// Adds the sites of `other`.
  void take(const inertia& other) { inertia_.take(other.inertia_); }
  /// (mu20 + mu02) / m^2; NaN for an empty accumulator.
  float to_result() const { return inertia_.to_result(); }
  /// Always true, also for an empty accumulator.
  bool is_valid() const { return inertia_.is_valid(); }

 private:
  accu::shape::inertia2d<typename I::site> inertia_;
};

}  // namespace attribute

}  // namespace morpho

namespace trait {

/// The properties of the attribute.
template <typename I>
struct accumulator_<morpho::attribute::inertia<I>> {
  /// It takes sites.
  using when_pix = accumulator::when_pix::use_p;
  /// Sums of squares are rounded.
  using order = accumulator::order::fixed;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_INERTIA_HPP

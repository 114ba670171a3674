// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_INERTIA_HPP
#define QEL_MORPHO_ATTRIBUTE_INERTIA_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/accu/shape/inertia2d.hpp>
#include <qel/accu/trait_accumulator.hpp>

namespace qel {

namespace morpho {

namespace attribute {

/// Moment of inertia of a component, without unit: see `accu::shape::inertia2d` for the formula and its
/// precision.
template <typename I>
struct inertia : accu::internal::base<float, inertia<I>> {
  using argument = typename I::psite;

  void init() { inertia_.init(); }
  void take(const argument& p) { inertia_.take(p); }
  void take(const inertia& other) { inertia_.take(other.inertia_); }
  float to_result() const { return inertia_.to_result(); }
  bool is_valid() const { return inertia_.is_valid(); }

 private:
  accu::shape::inertia2d<typename I::site> inertia_;
};

}  // namespace attribute

}  // namespace morpho

namespace trait {

template <typename I>
struct accumulator_<morpho::attribute::inertia<I>> {
  using when_pix = accumulator::when_pix::use_p;
  using order = accumulator::order::fixed;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_INERTIA_HPP

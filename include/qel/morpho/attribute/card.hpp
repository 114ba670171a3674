// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_CARD_HPP
#define QEL_MORPHO_ATTRIBUTE_CARD_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/accu/trait_accumulator.hpp>

namespace qel {

/// Morphology by component trees.
namespace morpho {

/// Accumulators of what a node has: its area, its diagonal, its inertia, the deviation of its values.
namespace attribute {

/// Area of a component, in sites.
template <typename I>
struct card : accu::internal::base<unsigned, card<I>> {
  /// A site.
  using argument = typename I::psite;

  /// Back to no sites.
  void init() { count_ = 0; }

  /// The site itself is not read.
  void take(const argument&) { ++count_; }

  /// Adds the area of `other`. \pre no site is in both.
  void take(const card& other) { count_ += other.count_; }

  /// Number of sites, modulo 2^32.
  unsigned to_result() const { return count_; }

  /// Always true: the area of nothing is 0.
  bool is_valid() const { return true; }

  /// Holds `count` sites.
  void set_count(unsigned count) { count_ = count; }

 private:
  unsigned count_ = 0;
};

}  // namespace attribute

}  // namespace morpho

namespace trait {

/// The properties of the attribute.
template <typename I>
struct accumulator_<morpho::attribute::card<I>> {
  /// Sites only count.
  using when_pix = accumulator::when_pix::use_none;
  /// Counts are exact.
  using order = accumulator::order::free;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_CARD_HPP

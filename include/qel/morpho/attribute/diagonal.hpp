// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_DIAGONAL_HPP
#define QEL_MORPHO_ATTRIBUTE_DIAGONAL_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/accu/shape/bbox.hpp>
#include <qel/accu/trait_accumulator.hpp>

#include <cmath>

namespace qel {

namespace morpho {

namespace attribute {

/// Length of the diagonal of a component's bounding box in sites: sqrt(H^2 + W^2) for H rows and W columns. The box of
/// one site has the diagonal sqrt(2).
template <typename I>
struct diagonal : accu::internal::base<double, diagonal<I>> {
  /// A site.
  using argument = typename I::psite;

  /// Back to no sites.
  void init() { bbox_.init(); }

  /// Adds a site.
  void take(const argument& p) {
    if (bbox_.is_valid())
      bbox_.take(p);
    else
      bbox_.take_as_init(p);
  }

  /// Adds the sites of `other`: its box is enough.
  void take(const diagonal& other) { bbox_.take(other.bbox_); }

  /// The length in sites; it means nothing for an empty accumulator.
  double to_result() const {
    double sum = 0.0;
    for (unsigned i = 0; i < 2; ++i) sum += length(i) * length(i);
    return std::sqrt(sum);
  }

  /// Whether a site has been taken.
  bool is_valid() const { return bbox_.is_valid(); }

 private:
  /// Rows (0) or columns (1) of the box. Not `len`: an empty accumulator has a length too, -65534.
  double length(unsigned i) const {
    const auto& b = bbox_.to_result();
    return static_cast<double>(int{b.pmax()[i]} - int{b.pmin()[i]}) + 1.0;
  }

  accu::shape::bbox<typename I::site> bbox_;
};

}  // namespace attribute

}  // namespace morpho

namespace trait {

/// The properties of the attribute.
template <typename I>
struct accumulator_<morpho::attribute::diagonal<I>> {
  /// It takes sites.
  using when_pix = accumulator::when_pix::use_p;
  /// Boxes are exact.
  using order = accumulator::order::free;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_DIAGONAL_HPP

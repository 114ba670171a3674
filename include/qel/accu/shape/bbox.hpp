// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_SHAPE_BBOX_HPP
#define QEL_ACCU_SHAPE_BBOX_HPP

#include <qel/accu/internal/base.hpp>
#include <qel/core/box2d.hpp>

#include <algorithm>

namespace qel {

/// Accumulators: values that summarise what they have taken.
namespace accu {

/// Accumulators of sites.
namespace shape {

/// The smallest box around the sites taken. The result of an empty accumulator has no meaning.
template <typename P>
struct bbox : accu::internal::base<const box<P>&, bbox<P>> {
  /// A site.
  using argument = P;

  /// Back to no sites; the old box stays until the next site replaces it.
  void init() { valid_ = false; }

  /// Grows the box as far as `p`.
  void take(const P& p) {
    if (!valid_) {
      box_ = box<P>(p, p);
      valid_ = true;
      return;
    }
    grow(p, p);
  }

  /// Grows the box around that of `other`.
  void take(const bbox& other) {
    if (!other.valid_) return;
    if (!valid_) {
      *this = other;
      return;
    }
    grow(other.box_.pmin(), other.box_.pmax());
  }

  /// The box, both corners included.
  const box<P>& to_result() const { return box_; }

  /// Whether a site has been taken.
  bool is_valid() const { return valid_; }

 private:
  /// Without a branch: a processor can't guess which sites grow a box.
  void grow(const P& pmin, const P& pmax) {
    for (unsigned i = 0; i < 2; ++i) {
      box_.pmin()[i] = std::min(box_.pmin()[i], pmin[i]);
      box_.pmax()[i] = std::max(box_.pmax()[i], pmax[i]);
    }
  }

  bool valid_ = false;
  box<P> box_;
};

}  // namespace shape

}  // namespace accu

}  // namespace qel

#endif  // QEL_ACCU_SHAPE_BBOX_HPP

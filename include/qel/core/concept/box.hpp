// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_BOX_HPP
#define QEL_CORE_CONCEPT_BOX_HPP

#include <qel/core/concept/site_set.hpp>

namespace qel {

/// A rectangle of sites between two inclusive corners.
///
/// A model offers `pmin()`, `pmax()` and `is_valid()`. This class adds lengths, number of sites and bounding box.
template <typename E>
struct Box : Site_Set<E> {
  /// Number of sites along coordinate `i` (0: rows, 1: columns); 0 for an invalid box.
  ///
  /// 32 bits hold 65536, the full range of a 16-bit coordinate. Valid rows may come with columns the wrong way round:
  /// their length wraps.
  unsigned len(unsigned i) const {
    const E& b = exact();
    if (!b.is_valid()) return 0;
    return static_cast<unsigned>(static_cast<int>(b.pmax()[i]) + 1 - static_cast<int>(b.pmin()[i]));
  }

  /// Number of sites, the product of the two lengths modulo 2^32; 0 for an invalid box.
  unsigned nsites() const { return len(0) * len(1); }

  /// The box itself.
  const E& bbox() const { return exact(); }

 protected:
  Box() = default;

 private:
  const E& exact() const { return internal::force_exact<E>(*this); }
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_BOX_HPP

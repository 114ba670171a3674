// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_NEIGHB2D_HPP
#define QEL_CORE_NEIGHB2D_HPP

// Neighbourhoods, and the two of the plane: `c4()` and `c8()`.

#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/convert/from_to.hpp>
#include <qel/core/neighb_niter.hpp>
#include <qel/core/window2d.hpp>

namespace qel {

namespace internal {

template <typename W, typename E>
struct neighborhood_base : Neighborhood<E> {
  using window = W;
  using site = typename W::site;
  using psite = typename W::psite;

  bool is_valid() const { return true; }

 protected:
  neighborhood_base() = default;
};

}  // namespace internal

/// A window whose displacements lead to the neighbours of a site. A Neighborhood with the types `window`, `site` and
/// `psite`.
template <typename W>
class neighb : public internal::neighborhood_base<W, neighb<W>> {
 public:
  /// The walk over the neighbours of a site.
  using niter = neighb_fwd_niter<W>;

  /// No neighbours; `win()` takes them.
  neighb() = default;
  /// The neighbours that the displacements of `win` lead to, whether they go both ways or not.
  explicit neighb(const W& win) : win_(win) {}

  /// The displacements to the neighbours.
  const W& win() const { return win_; }
  /// The same, to fill it.
  W& win() { return win_; }

  /// Number of neighbours of a site.
  unsigned size() const { return win_.size(); }

 private:
  W win_;
};

/// A neighbourhood in the plane.
using neighb2d = neighb<window2d>;

namespace internal {

/// The neighbours for which the table, a square of 3 x 3 row by row, has true.
inline neighb2d filled(const bool (&vals)[9]) {
  neighb2d it;
  convert::over_load::from_to_<9u>(vals, it);
  static_cast<void>(it.win().dp(0));  // the first read freezes the set, which writes: done before threads share it
  return it;
}

}  // namespace internal

/// The four neighbours: up, left, right, down. One object, built at the first call, by whichever thread makes it, and kept.
inline const neighb2d& c4() {
  static const bool vals[9] = {false, true, false, true, false, true, false, true, false};
  static const neighb2d it = internal::filled(vals);
  return it;
}

/// The eight neighbours: up-left, up, up-right, left, right, down-left, down, down-right. Kept like `c4()`.
inline const neighb2d& c8() {
  static const bool vals[9] = {true, true, true, true, false, true, true, true, true};
  static const neighb2d it = internal::filled(vals);
  return it;
}

}  // namespace qel

#endif  // QEL_CORE_NEIGHB2D_HPP

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

/// A shared neighbourhood, filled from a table at the first call and kept until the program or module ends.
inline const neighb2d& filled_once(neighb2d& it, const bool (&vals)[9]) {
  if (it.size() == 0) convert::over_load::from_to_<9u>(vals, it);
  return it;
}

}  // namespace internal

/// The four neighbours: up, left, right, down. One object, built at the first call and kept.
inline const neighb2d& c4() {
  static const bool vals[9] = {false, true, false, true, false, true, false, true, false};
  static neighb2d it;
  return internal::filled_once(it, vals);
}

/// The eight neighbours: up-left, up, up-right, left, right, down-left, down, down-right. Kept like `c4()`.
inline const neighb2d& c8() {
  static const bool vals[9] = {true, true, true, true, false, true, true, true, true};
  static neighb2d it;
  return internal::filled_once(it, vals);
}

}  // namespace qel

#endif  // QEL_CORE_NEIGHB2D_HPP

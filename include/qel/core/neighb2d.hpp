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
  /// The neighbours that the displacements of `win` lead to. They need not go both ways.
  explicit neighb(const W& win) : win_(win) {}

  /// The displacements to the neighbours.
  const W& win() const { return win_; }
  /// The same, writable.
  W& win() { return win_; }

  /// Number of neighbours of a site.
  unsigned size() const { return win_.size(); }

 private:
  W win_;
};

/// A neighbourhood in the plane.
using neighb2d = neighb<window2d>;

namespace internal {

/// The neighbours that are true in a table of 3 x 3, row by row.
inline neighb2d filled(const bool (&vals)[9]) {
  neighb2d it;
  convert::over_load::from_to_<9u>(vals, it);
  static_cast<void>(it.win().dp(0));  // the first read writes (it freezes the set): before threads share `it`
  return it;
}

}  // namespace internal

/// The four neighbours: up, left, right, down. One object, which the first call builds, in any thread.
inline const neighb2d& c4() {
  static const bool vals[9] = {false, true, false, true, false, true, false, true, false};
  static const neighb2d it = internal::filled(vals);
  return it;
}

/// The eight neighbours: up-left, up, up-right, left, right, down-left, down, down-right. One object, like `c4()`.
inline const neighb2d& c8() {
  static const bool vals[9] = {true, true, true, true, false, true, true, true, true};
  static const neighb2d it = internal::filled(vals);
  return it;
}

}  // namespace qel

#endif  // QEL_CORE_NEIGHB2D_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_UNION_FIND_ZFIND_ROOT_HPP
#define QEL_MORPHO_TREE_UNION_FIND_ZFIND_ROOT_HPP

#include <qel/core/image2d.hpp>
#include <qel/core/point2d.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The root of `x` in the union-find forest `zpar`. Makes every site on the way point straight at it.
///
/// No recursion: a chain in a real image has millions of sites, the host's stack 8 MB.
inline point2d zfind_root(image2d<point2d>& zpar, const point2d& x) {
  point2d root = x;
  while (zpar(root) != root) root = zpar(root);
  for (point2d p = x; p != root;) {
    const point2d next = zpar(p);
    zpar(p) = root;
    p = next;
  }
  return root;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_UNION_FIND_ZFIND_ROOT_HPP

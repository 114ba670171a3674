// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_FAILURES_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_FAILURES_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

namespace internal {

/// The answers about a node: bit k is set if it fails predicate k.
using failure_bits = unsigned char;

static_assert(std::numeric_limits<failure_bits>::digits >= most_planes, "failures: there is a bit for each plane");

/// The failures of each of `n` nodes, by number.
///
/// One predicate asks 256 nodes in a row before the next does: where it reads an image and compares, as most do, the
/// compiler makes vector instructions of the inner loop.
///
/// \param predicates the first of `npredicates`, at most `most_planes`.
/// \throws std::bad_alloc
template <typename P>
std::vector<failure_bits> failures(unsigned n, const P* predicates, std::size_t npredicates) {
  constexpr unsigned at_once = 256;
  static_assert(tree::internal::node_sheet::ncols % at_once == 0, "failures: nodes asked at once are of one row");
  std::vector<failure_bits> result(n);
  for (unsigned begin = 0; begin < n; begin += at_once) {
    const point2d from = tree::internal::node_sheet::site(begin);
    const point2d to = tree::internal::node_sheet::site(std::min(begin + at_once, n) - 1);
    std::array<unsigned, at_once> bits = {};
    for (std::size_t k = 0; k < npredicates; ++k) {
      const P& passes = predicates[k];
      point2d p = from;
      --p.col();
      for (unsigned i = 0; p.col() < to.col(); ++i) {
        ++p.col();
        bits[i] |= static_cast<unsigned>(!passes(p)) << k;
      }
    }
    std::transform(bits.begin(), bits.begin() + (to.col() - from.col() + 1), result.begin() + begin,
                   [](unsigned b) { return qel::internal::narrowed<failure_bits>(b); });
  }
  return result;
}

}  // namespace internal

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_FAILURES_HPP

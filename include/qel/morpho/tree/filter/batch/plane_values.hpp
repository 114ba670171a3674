// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_BATCH_PLANE_VALUES_HPP
#define QEL_MORPHO_TREE_FILTER_BATCH_PLANE_VALUES_HPP

#include <qel/core/internal/large_pages.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

namespace qel {

namespace morpho {

namespace tree {

/// The most planes that go out together.
inline constexpr std::size_t most_planes = 8;

/// The values of the nodes of a tree in some planes, those of a node side by side: a pixel looks its node up once for
/// all planes, and the look-ups are what writing planes costs.
template <typename V>
class plane_values {
 public:
  /// `nplanes` planes of `nnodes` nodes, not set. \throws std::bad_alloc
  plane_values(std::size_t nnodes, std::size_t nplanes) : nplanes_(nplanes), values_(new V[nnodes * nplanes]) {
    qel::internal::advise_large_pages(values_.get(), nnodes * nplanes * sizeof(V));
  }

  /// Number of planes.
  std::size_t size() const { return nplanes_; }

  /// The values of the node number `node`, one for each plane.
  const V* of(std::size_t node) const { return values_.get() + node * nplanes_; }
  /// The same, writable.
  V* of(std::size_t node) { return values_.get() + node * nplanes_; }

  /// Writes the values of `n` pixels whose nodes are `numbers`: those of the first plane to `destination[0]` to
  /// `destination[n - 1]`, those of plane k from `destination[k * distance]` on. \pre at most `most_planes` planes.
  template <typename D>
  void spread(const unsigned* numbers, std::size_t n, D* destination, std::size_t distance) const {
    if (nplanes_ > 0) spread_planes<1>(numbers, n, destination, distance);
  }

 private:
  /// The compiler knows the number of planes.
  template <std::size_t planes, typename D>
  void spread_planes(const unsigned* numbers, std::size_t n, D* destination, std::size_t distance) const {
    if constexpr (planes < most_planes)
      if (nplanes_ > planes) return spread_planes<planes + 1>(numbers, n, destination, distance);
    // A piece stays in the nearest cache between look-up and writing.
    constexpr std::size_t piece = 128;
    std::array<std::array<V, planes>, piece> found;
    for (; n > 0; numbers += piece, destination += piece) {
      const std::size_t count = std::min(piece, n);
      n -= count;
      for (std::size_t i = 0; i < count; ++i) std::copy_n(values_.get() + numbers[i] * planes, planes, found[i].data());
      for (std::size_t k = 0; k < planes; ++k)
        for (std::size_t i = 0; i < count; ++i) destination[k * distance + i] = static_cast<D>(found[i][k]);
    }
  }

  std::size_t nplanes_;
  std::unique_ptr<V[]> values_;
};

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_BATCH_PLANE_VALUES_HPP

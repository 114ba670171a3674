// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_UTIL_PRIORITY_BITS_HPP
#define QEL_CORE_UTIL_PRIORITY_BITS_HPP

// A set of small integers with a fast search for the greatest member: one bit for each integer, and summary layers with
// one bit for each word below.
//
// Cost: an insertion touches a word of each layer, a removal or a search mostly a word of the lowest one only. A layer
// divides the range by 64: two layers hold 4096 integers, three 262,144, four 16 million.
//
// Memory: n / 8 bytes for the members and 64^(layers - 1) / 8 for the summaries, whatever n is. With the fewest layers
// that hold n this is about n / 8 just below a power of 64, and twice that just above.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qel {

namespace util {

/// A set of integers in [0, n), in a fixed number of layers: n is at most 64^layers.
template <unsigned layers>
class priority_bits {
 public:
  /// The answer of a search that finds nothing.
  static constexpr unsigned none = ~0u;

  /// Whether integers below `n` fit into the layers.
  static constexpr bool fits(std::size_t n) { return n <= std::size_t{1} << (6 * layers); }

  /// An empty set for integers below `n`. \pre `fits(n)`. \throws std::bad_alloc
  explicit priority_bits(std::size_t n) : words_(first_word(0) + (n + 63) / 64) {}

  /// Adds `k`, if it is not a member. \pre `k < n`.
  void insert(unsigned k) {
    for (unsigned layer = 0; layer < layers; ++layer) {
      word(layer, k) |= bit(k);
      k /= 64;
    }
  }

  /// Removes `k`, if it is a member. \pre `k < n`.
  void erase(unsigned k) {
    for (unsigned layer = 0; layer < layers; ++layer) {
      word(layer, k) &= ~bit(k);
      if (word(layer, k) != 0) return;
      k /= 64;
    }
  }

  /// The greatest member below `k`, or `none`. \pre `k < n`.
  unsigned greatest_below(unsigned k) const {
    for (unsigned layer = 0; layer < layers; ++layer) {
      const std::uint64_t below = word(layer, k) & (bit(k) - 1);
      if (below != 0) return descend(layer, k / 64 * 64 + top(below));
      k /= 64;
    }
    return none;
  }

 private:
  static std::uint64_t bit(unsigned k) { return std::uint64_t{1} << (k % 64); }
  static unsigned top(std::uint64_t word) { return 63u - static_cast<unsigned>(__builtin_clzll(word)); }

  /// Where a layer starts: the summaries, the highest first, each with room for a whole layer; then the members.
  static constexpr std::size_t first_word(unsigned layer) {
    std::size_t first = 0;
    for (unsigned above = layers - 1; above > layer; --above) first = first * 64 + 1;
    return first;
  }

  /// The word of a layer in which the bit `k` of this layer lies.
  std::uint64_t& word(unsigned layer, unsigned k) { return words_[first_word(layer) + k / 64]; }
  const std::uint64_t& word(unsigned layer, unsigned k) const { return words_[first_word(layer) + k / 64]; }

  /// From bit `k` of a layer down to the greatest member that it stands for.
  unsigned descend(unsigned layer, unsigned k) const {
    while (layer > 0) {
      --layer;
      k = k * 64 + top(words_[first_word(layer) + k]);
    }
    return k;
  }

  std::vector<std::uint64_t> words_;
};

}  // namespace util

}  // namespace qel

#endif  // QEL_CORE_UTIL_PRIORITY_BITS_HPP

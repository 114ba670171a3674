// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_UTIL_PRIORITY_BITS_HPP
#define QEL_CORE_UTIL_PRIORITY_BITS_HPP

// A set of small integers with a fast search for the greatest member: one bit for each integer, and summary layers
// with one bit for each word below.
//
// Cost: an insertion touches a word of each layer, a removal or a search mostly a word of the lowest one only. A layer
// divides the range by 64: two layers for 256 integers, three for 65,536, four for 16 million. Memory: a little over
// n / 8 bytes.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qel {

namespace util {

/// A set of integers in [0, n).
class priority_bits {
 public:
  /// The answer of a search that finds nothing.
  static constexpr unsigned none = ~0u;

  /// An empty set for integers below `n`.
  explicit priority_bits(std::size_t n) {
    std::size_t size = 0;
    do {
      n = (n + 63) / 64;
      first_word_.push_back(size);
      size += n;
    } while (n > 1);
    words_.resize(size);
  }

  /// Adds `k`, if it is not a member. \pre `k < n`.
  void insert(unsigned k) {
    for (const std::size_t first : first_word_) {
      words_[first + k / 64] |= bit(k);
      k /= 64;
    }
  }

  /// Removes `k`, if it is a member. \pre `k < n`.
  void erase(unsigned k) {
    for (const std::size_t first : first_word_) {
      std::uint64_t& word = words_[first + k / 64];
      word &= ~bit(k);
      if (word != 0) return;
      k /= 64;
    }
  }

  /// The greatest member below `k`, or `none`. \pre `k < n`.
  unsigned greatest_below(unsigned k) const {
    for (std::size_t layer = 0; layer < first_word_.size(); ++layer) {
      const std::uint64_t below = words_[first_word_[layer] + k / 64] & (bit(k) - 1);
      if (below != 0) return descend(layer, k / 64 * 64 + top(below));
      k /= 64;
    }
    return none;
  }

 private:
  static std::uint64_t bit(unsigned k) { return std::uint64_t{1} << (k % 64); }
  static unsigned top(std::uint64_t word) { return 63u - static_cast<unsigned>(__builtin_clzll(word)); }

  /// From bit `k` of a layer down to the greatest member that it stands for.
  unsigned descend(std::size_t layer, unsigned k) const {
    while (layer > 0) k = k * 64 + top(words_[first_word_[--layer] + k]);
    return k;
  }

  std::vector<std::uint64_t> words_;     ///< all layers, the members themselves first
  std::vector<std::size_t> first_word_;  ///< where each layer starts
};

}  // namespace util

}  // namespace qel

#endif  // QEL_CORE_UTIL_PRIORITY_BITS_HPP

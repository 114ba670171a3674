// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_FEW_VALUES_HPP
#define QEL_MORPHO_TREE_SWEEP_FEW_VALUES_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/site_set/box_piter.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The most different values that are few: their numbers fit into 16 bits beside `none`.
inline constexpr unsigned most_few_values = std::numeric_limits<std::uint16_t>::max();

/// Numbers the different values that come, from 0, and counts how often each comes.
///
/// A hash table with a bound on all its steps together: for values that were made to collide it gives up.
template <typename T>
class hashed_value_numbers {
 public:
  /// For `n` values. \throws std::bad_alloc
  explicit hashed_value_numbers(std::size_t n) : steps_left_(4 * n + 1024) {
    while (std::size_t{1} << bits_ < 2 * std::min<std::size_t>(n, most_few_values)) ++bits_;
    slots_.resize(std::size_t{1} << bits_, slot{T(), none});
  }

  /// Counts `v`; false if it can't have a number. \throws std::bad_alloc
  bool count(const T& v) {
    std::size_t at = first_slot(v);
    for (; slots_[at].number != none && slots_[at].value != v; at = next_slot(at))
      if (--steps_left_ == 0) return false;
    slot& found = slots_[at];
    if (found.number == none) {
      if (values_.size() == most_few_values) return false;
      found = {v, qel::internal::narrowed<std::uint16_t>(values_.size())};
      values_.push_back(v);
      counts_.push_back(0);
    }
    ++counts_[found.number];
    return true;
  }

  /// The number of `v`, which has been counted.
  std::uint16_t number(const T& v) const {
    std::size_t at = first_slot(v);
    while (slots_[at].value != v) at = next_slot(at);
    return slots_[at].number;
  }

  /// How often each number came.
  const std::vector<unsigned>& counts() const { return counts_; }

  /// The numbers in the order of their values.
  std::vector<std::uint16_t> sorted() const {
    std::vector<std::uint16_t> numbers(values_.size());
    std::iota(numbers.begin(), numbers.end(), std::uint16_t{0});
    std::sort(numbers.begin(), numbers.end(), [&](unsigned a, unsigned b) { return values_[a] < values_[b]; });
    return numbers;
  }

 private:
  static constexpr std::uint16_t none = most_few_values;

  struct slot {
    T value;
    std::uint16_t number;
  };

  std::size_t first_slot(const T& v) const {
    constexpr std::uint64_t golden = 0x9e3779b97f4a7c15;
    return static_cast<std::uint64_t>(v) * golden >> (64 - bits_);
  }
  std::size_t next_slot(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }

  unsigned bits_ = 4;
  std::size_t steps_left_;
  std::vector<slot> slots_;
  std::vector<T> values_;
  std::vector<unsigned> counts_;
};

/// The levels of an image of few different values: their ranks, from 0 up, without sorted sites.
template <typename I>
class few_values {
 public:
  /// Cost: one pass. \throws std::bad_alloc
  few_values(const I& f, bool increasing) : numbers_(f.domain().nsites()) {
    box_fwd_piter_<typename I::site> p(f.domain());
    for (p.start(); p.is_valid(); p.next())
      if (!numbers_.count(f(p))) return;
    std::vector<std::uint16_t> order = numbers_.sorted();
    if (!increasing) std::reverse(order.begin(), order.end());

    level_of_.resize(order.size());
    unsigned nsites = 0;
    for (const unsigned number : order) {
      level_of_[number] = qel::internal::narrowed<std::uint16_t>(below_.size());
      below_.push_back(nsites);
      nsites += numbers_.counts()[number];
    }
  }

  /// Whether there are few: not if 16 bits are too few levels, nor if to number the values takes too long.
  bool are_few() const { return !below_.empty(); }

  /// Gives the sites of the domain their levels. Cost: one pass. \pre `are_few()`.
  template <typename L>
  void set_levels(const I& f, L& levels) const {
    box_fwd_piter_<typename I::site> p(f.domain());
    for (p.start(); p.is_valid(); p.next()) levels(p) = level_of_[numbers_.number(f(p))];
  }

  /// For each level, the number of sites of lower ones. \pre `are_few()`.
  const std::vector<unsigned>& below() const { return below_; }

 private:
  hashed_value_numbers<typename I::value> numbers_;
  std::vector<std::uint16_t> level_of_;  ///< by number
  std::vector<unsigned> below_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_FEW_VALUES_HPP

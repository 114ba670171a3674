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
#include <type_traits>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The most different values whose levels fit into 16 bits beside 0.
inline constexpr unsigned most_few_values = std::numeric_limits<std::uint16_t>::max();

/// Numbers the different values that come, from 0, and counts how often each comes.
///
/// A hash table with a bound on all its steps together: for values that were made to collide it gives up.
template <typename T, typename = void>
class value_numbers {
 public:
  /// For `n` values. \throws std::bad_alloc
  explicit value_numbers(std::size_t n) : steps_left_(4 * n + 1024) {
    while (std::size_t{1} << bits_ < 4 * std::min<std::size_t>(n, most_few_values)) ++bits_;
    slots_.resize(std::size_t{1} << bits_, slot{T(), none});
  }

  /// Counts `v` and puts its number into `number`; false if there is none. \throws std::bad_alloc
  bool count(const T& v, std::uint16_t& number) {
    constexpr std::uint64_t golden = 0x9e3779b97f4a7c15;
    std::size_t at = static_cast<std::uint64_t>(v) * golden >> (64 - bits_);
    while (slots_[at].number != none && slots_[at].value != v) {
      if (--steps_left_ == 0) return false;
      at = (at + 1) & (slots_.size() - 1);
    }
    slot& found = slots_[at];
    if (found.number == none) {
      if (values_.size() == most_few_values) return false;
      found = {v, qel::internal::narrowed<std::uint16_t>(values_.size())};
      values_.push_back(v);
      counts_.push_back(0);
    }
    number = found.number;
    ++counts_[number];
    return true;
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

  unsigned bits_ = 4;
  std::size_t steps_left_;
  std::vector<slot> slots_;
  std::vector<T> values_;
  std::vector<unsigned> counts_;
};

/// The same for values of 16 bits: a number is the distance from the least value of the type.
template <typename T>
class value_numbers<T, std::enable_if_t<std::is_integral_v<T> && sizeof(T) == 2>> {
 public:
  explicit value_numbers(std::size_t) : counts_(std::size_t{most_few_values} + 1) {}

  bool count(T v, std::uint16_t& number) {
    number = qel::internal::narrowed<std::uint16_t>(int{v} - int{std::numeric_limits<T>::min()});
    ++counts_[number];
    return true;
  }

  const std::vector<unsigned>& counts() const { return counts_; }

  std::vector<std::uint16_t> sorted() const {
    std::vector<std::uint16_t> numbers;
    for (unsigned k = 0; k < counts_.size(); ++k)
      if (counts_[k] != 0) numbers.push_back(qel::internal::narrowed<std::uint16_t>(k));
    return numbers;
  }

 private:
  std::vector<unsigned> counts_;
};

/// Gives the sites of `f` levels by rank, from 1 up, without sorting sites. Returns for each level the number of sites of
/// lower ones; nothing if there are more different values than 16 bits have levels, or numbering them takes too long.
///
/// Cost: two passes.
///
/// \param levels an image of 16-bit levels. If nothing is returned, some of those in the domain are set.
/// \throws std::bad_alloc
template <typename I, typename L>
std::vector<unsigned> set_levels_of_few_values(const I& f, bool increasing, L& levels) {
  box_fwd_piter_<typename I::site> p(f.domain());
  value_numbers<typename I::value> numbers(f.domain().nsites());
  for (p.start(); p.is_valid(); p.next())
    if (!numbers.count(f(p), levels(p))) return {};
  std::vector<std::uint16_t> order = numbers.sorted();
  if (order.size() > most_few_values) return {};
  if (!increasing) std::reverse(order.begin(), order.end());

  std::vector<std::uint16_t> level_of(numbers.counts().size());
  std::vector<unsigned> below = {0};
  unsigned nsites = 0;
  for (const unsigned number : order) {
    level_of[number] = qel::internal::narrowed<std::uint16_t>(below.size());
    below.push_back(nsites);
    nsites += numbers.counts()[number];
  }
  for (p.start(); p.is_valid(); p.next()) levels(p) = level_of[levels(p)];
  return below;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_FEW_VALUES_HPP

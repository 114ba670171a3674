// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_SORT_RADIX_SORT_HPP
#define QEL_DATA_SORT_RADIX_SORT_HPP

// Sites by value, for integers too wide to have a counter each: a counting sort for each group of bits.
//
// The order (value, row, column) is total, so any sort gives the same array. This one never compares: the sites enter
// in raster order and each pass is stable. It sorts only by bits in which the values differ from the least one: a
// picture of 12 bits in an `int` takes one pass from 65,536 pixels on, two below.
//
// Cost: a pass takes about as long as the counting sort of an 8-bit image. Memory while it runs: nothing for one pass,
// one value with its site for each site for two, two of them for more.

#include <qel/core/internal/large_pages.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/core/site_set/p_array.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

namespace qel {

namespace data {

namespace internal {

/// A site with its key.
template <typename U>
struct keyed_site {
  U key;
  point2d site;
};

/// One digit of the keys: `bits` bits from bit `shift` up. `places[d]` is the next place for a key with the digit d.
template <typename U>
struct radix_digit {
  radix_digit(unsigned shift_, unsigned bits) : shift(shift_), mask((1u << bits) - 1), places(std::size_t{1} << bits) {}

  unsigned shift;
  unsigned mask;
  std::vector<unsigned> places;

  unsigned of(U key) const { return qel::internal::narrowed<unsigned>(key >> shift) & mask; }
  unsigned take_place(U key) { return places[of(key)]++; }

  /// Whether all `n` keys counted have the same digit here.
  bool is_constant(std::size_t n) const { return std::find(places.begin(), places.end(), n) != places.end(); }

  void counts_to_places() { std::exclusive_scan(places.begin(), places.end(), places.begin(), 0u); }
};

/// Calls `visit(key, site)` in raster order. The key of a site is how far its value lies above `least`, an unsigned
/// number that holds any difference.
template <typename I, typename Visit>
void for_each_key(const I& ima, typename I::value least, Visit visit) {
  using unsigned_t = std::make_unsigned_t<typename I::value>;
  typename I::domain_t::fwd_piter p(ima.domain());
  for (p.start(); p.is_valid(); p.next())
    visit(qel::internal::narrowed<unsigned_t>(static_cast<unsigned_t>(ima(p)) - static_cast<unsigned_t>(least)),
          p.to_site());
}

/// The least and the greatest value of an image's domain; those of the type if one digit holds them all, because a look
/// would save nothing.
template <typename I>
std::pair<typename I::value, typename I::value> value_range(const I& ima) {
  using limits = std::numeric_limits<typename I::value>;
  if constexpr (sizeof(typename I::value) <= 2) return {limits::min(), limits::max()};
  const auto first = ima(ima.domain().pmin());
  std::pair<typename I::value, typename I::value> range(first, first);
  typename I::domain_t::fwd_piter p(ima.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const auto v = ima(p);
    if (v < range.first) range.first = v;
    if (range.second < v) range.second = v;
  }
  return range;
}

/// The bits of a digit for `n` keys of type U. 16 save one pass in three, with large pages; 11 for few keys, for which
/// 65,536 counters a digit are more work than a pass.
template <typename U>
unsigned digit_bits(std::size_t n) {
  return sizeof(U) <= 2 || n >= std::size_t{1} << 16 ? 16 : 11;
}

/// The digits in which the keys of `ima` differ, the lowest first, with the places for the keys; one digit for a
/// constant image. `greatest` is the greatest key.
template <typename U, typename I>
std::vector<radix_digit<U>> radix_digits(const I& ima, typename I::value least, U greatest) {
  const std::size_t n = ima.domain().nsites();
  const unsigned bits = digit_bits<U>(n);
  std::vector<radix_digit<U>> digits;
  for (unsigned shift = 0; shift < 8 * sizeof(U) && (shift == 0 || greatest >> shift != 0); shift += bits)
    digits.emplace_back(shift, bits);
  for_each_key(ima, least, [&](U key, const point2d&) {
    for (auto& digit : digits) ++digit.places[digit.of(key)];
  });
  const auto constant = [n](const auto& digit) { return digit.is_constant(n); };
  if (digits.size() > 1) digits.erase(std::remove_if(digits.begin(), digits.end(), constant), digits.end());
  for (auto& digit : digits) digit.counts_to_places();
  return digits;
}

}  // namespace internal

namespace impl {

/// The sites of `ima` by ascending value, equal values in raster order. \throws std::bad_alloc.
template <typename I>
p_array2d radix_sorted_psites(const I& ima) {
  using key_t = std::make_unsigned_t<typename I::value>;
  using keyed_t = internal::keyed_site<key_t>;
  const auto [least, greatest] = internal::value_range(ima);
  const auto span = qel::internal::narrowed<key_t>(static_cast<key_t>(greatest) - static_cast<key_t>(least));
  auto digits = internal::radix_digits<key_t>(ima, least, span);
  const std::size_t n = ima.domain().nsites();
  p_array2d result;
  qel::internal::resize_large(result.vect_, n);

  if (digits.size() == 1) {
    internal::for_each_key(ima, least,
                           [&](key_t key, const point2d& p) { result.vect_[digits[0].take_place(key)] = p; });
    return result;
  }
  std::vector<keyed_t> from;
  qel::internal::resize_large(from, n);
  internal::for_each_key(ima, least, [&](key_t key, const point2d& p) { from[digits[0].take_place(key)] = {key, p}; });
  if (digits.size() > 2) {
    std::vector<keyed_t> to;
    qel::internal::resize_large(to, n);
    for (std::size_t d = 1; d + 1 < digits.size(); ++d) {
      for (const keyed_t& k : from) to[digits[d].take_place(k.key)] = k;
      from.swap(to);
    }
  }
  for (const keyed_t& k : from) result.vect_[digits.back().take_place(k.key)] = k.site;
  return result;
}

}  // namespace impl

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_SORT_RADIX_SORT_HPP

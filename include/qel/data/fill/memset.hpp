// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_FILL_MEMSET_HPP
#define QEL_DATA_FILL_MEMSET_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/point2d.hpp>
#include <qel/data/fill/pixel.hpp>
#include <qel/trace/trace.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

namespace qel {

namespace data {

namespace impl {

/// Sets `n` elements from that of `pix` on to `value`.
///
/// Trap: with 0 or 1 elements the scope stays open. The scope around it then reports bad matching, and tracing goes
/// off. Outlines have always shown this, so it stays. The sheet of nodes has two sites at least for this reason.
template <typename I>
void memset_(const pixel<I>& pix, const typename I::value& value, std::size_t n) {
  trace::entering("data::impl::memset_");
  if (n == 0) return;
  using value_t = typename I::value;
  value_t* const first = pix.address_();
  if (n == 1) {
    *first = value;
    return;
  }
  if constexpr (sizeof(value_t) == 1 && std::is_trivially_copyable_v<value_t>) {
    unsigned char byte = 0;
    std::memcpy(&byte, &value, 1);
    std::memset(first, byte, n);
  } else {
    std::fill_n(first, n, value);
  }
  trace::exiting("data::impl::memset_");
}

}  // namespace impl

/// Sets `n` elements of the block, from that at `p` on, to `value`.
///
/// \pre the image has `p`, and its block has `n` elements from there on.
template <typename I>
void memset_(Image<I>& ima, const point2d& p, const typename I::value& value, std::size_t n) {
  trace::entering("data::memset_");
  const pixel<I> pix(qel::internal::force_exact<I>(ima), p);
  impl::memset_(pix, value, n);
  trace::exiting("data::memset_");
}

}  // namespace data

}  // namespace qel

#endif  // QEL_DATA_FILL_MEMSET_HPP

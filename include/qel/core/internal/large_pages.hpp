// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_LARGE_PAGES_HPP
#define QEL_CORE_INTERNAL_LARGE_PAGES_HPP

// Large pages for large blocks.
//
// Fresh memory costs a page fault for each page at its first touch. With pages of 4 kB these are a quarter of the time
// of a profile of an `int` image; with pages of 2 MB next to nothing. Linux with transparent huge pages on "madvise",
// as on Debian, gives large pages only when asked. This asks. It is advice: without large pages nothing changes.

#include <cstddef>
#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace qel {

namespace internal {

/// Asks for large pages within the `bytes` bytes from `first` on, which nothing has touched yet.
inline void advise_large_pages([[maybe_unused]] void* first, [[maybe_unused]] std::size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  constexpr std::uintptr_t page = std::uintptr_t{2} << 20;
  if (bytes < 2 * page) return;
  // Whole pages within the block only. Distances are numbers; the address comes from the block's own pointer.
  const auto before = (page - reinterpret_cast<std::uintptr_t>(first) % page) % page;
  const auto whole = (bytes - before) / page * page;
  madvise(static_cast<unsigned char*>(first) + before, whole, MADV_HUGEPAGE);
#endif
}

/// Room for `n` elements in the empty vector `v`, in large pages if it is large.
template <typename V>
void reserve_large(V& v, std::size_t n) {
  v.reserve(n);
  advise_large_pages(v.data(), v.capacity() * sizeof(typename V::value_type));
}

/// Gives the empty vector `v` the size `n`, in large pages if it is large.
template <typename V>
void resize_large(V& v, std::size_t n) {
  reserve_large(v, n);
  v.resize(n);
}

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_LARGE_PAGES_HPP

// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_IMAGE_BASE_HPP
#define QEL_CORE_INTERNAL_IMAGE_BASE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/internal/metal.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/util/tracked_ptr.hpp>
#include <qel/core/value_set.hpp>

namespace qel {

namespace internal {

/// The shared record of the image type I.
template <typename I>
struct data;

/// What all images share: a handle on the record, and the set of their values.
template <typename T, typename S, typename E>
class image_base : public Image<E> {
 public:
  using value = T;
  using lvalue = T&;
  using rvalue = const T&;
  using domain_t = S;
  using site = typename S::site;
  using psite = typename S::psite;

  /// Whether the image has a record; all else asks for a valid image.
  bool is_valid() const { return data_ != nullptr; }

  /// All values that an element can take; the same for every image of the value type.
  const qel::value::set<T>& values_space() const { return qel::value::set<T>::the(); }
  const qel::value::set<T>& values_eligible() const { return qel::value::set<T>::the(); }

  /// The handle on the record, to ask who shares it.
  const util::tracked_ptr<data<E>>& record() const { return data_; }

 protected:
  image_base() = default;
  image_base(const image_base& rhs) : Image<E>() { data_ = rhs.data_; }
  image_base& operator=(const image_base& rhs) = default;
  ~image_base() = default;

  util::tracked_ptr<data<E>> data_;
};

namespace check {

/// Operations that only images with their elements in one block can offer.
template <typename I, typename B>
struct image_fastest_ {};

template <typename I>
struct image_fastest_<I, metal::bool_<true>> {
  /// Number of elements between the start of the buffer and the element at `p`. \pre the image has `p`.
  template <typename P>
  unsigned index_of_point(const P& p) const {
    const I& ima = force_exact<I>(*this);
    return internal::narrowed<unsigned>(&ima(p) - ima.buffer());
  }
};

}  // namespace check

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_IMAGE_BASE_HPP

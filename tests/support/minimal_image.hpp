// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_MINIMAL_IMAGE_HPP
#define TESTS_SUPPORT_MINIMAL_IMAGE_HPP

#include <cstddef>
#include <vector>

#include <qel/core/box2d.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/point2d.hpp>

namespace support {

/// An image with nothing but what the concept asks for, and a border of 0: no block, no sharing. An algorithm that
/// takes it needs no more.
template <typename T>
class minimal_image : public qel::Image<minimal_image<T>> {
 public:
  using value = T;
  using lvalue = T&;
  using rvalue = const T&;
  using site = qel::point2d;
  using psite = qel::point2d;
  using domain_t = qel::box2d;

  /// \param values row by row.
  minimal_image(const qel::box2d& b, const std::vector<T>& values) : domain_(b), values_(values) {}

  bool is_valid() const { return true; }
  const qel::box2d& domain() const { return domain_; }
  bool has(const qel::point2d& p) const { return domain_.has(p); }
  unsigned border() const { return 0; }
  const T& operator()(const qel::point2d& p) const { return values_[index(p)]; }
  T& operator()(const qel::point2d& p) { return values_[index(p)]; }

 private:
  std::size_t index(const qel::point2d& p) const {
    const auto row = static_cast<std::size_t>(p.row() - domain_.pmin_row());
    return row * domain_.len(1) + static_cast<std::size_t>(p.col() - domain_.pmin_col());
  }

  qel::box2d domain_;
  std::vector<T> values_;
};

}  // namespace support

#endif  // TESTS_SUPPORT_MINIMAL_IMAGE_HPP

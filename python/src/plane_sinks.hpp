// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_PLANE_SINKS_HPP
#define PYTHON_SRC_PLANE_SINKS_HPP

// Where the planes of a profile go: sinks for `qel::morpho::attribute_profile`. Both look at the stop sign at each call.

#include "stop.hpp"
#include "typed_calls.hpp"

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace python {

/// Writes planes one after the other, each in raster order and without gaps. The numbers of the nodes are larger than the
/// values, so a row of them is read once for all planes of a group.
template <typename T>
class plane_writer {
 public:
  plane_writer(const stop_sign& stop, T* position) : stop_(stop), position_(position) {}

  template <typename Nodes, typename F>
  void filtered(const Nodes& nodes, const std::vector<F>& values) {
    stop_.check();
    const auto& number = nodes.table().number;
    const std::size_t rows = number.domain().len(0);
    const std::size_t cols = number.domain().len(1);
    for (std::size_t row = 0; row < rows; ++row) {
      const auto* const numbers = &number(qel::point2d(qel::internal::narrowed<short>(row), 0));
      for (std::size_t k = 0; k < values.size(); ++k) {
        const auto* const value_of = values[k].buffer();
        std::transform(numbers, numbers + cols, position_ + (k * rows + row) * cols,
                       [value_of](unsigned node) { return value_of[node]; });
      }
    }
    position_ += values.size() * rows * cols;
  }

  void input(const qel::image2d<T>& image) {
    stop_.check();
    const std::size_t cols = image.domain().len(1);
    for (std::size_t row = 0; row < image.domain().len(0); ++row)
      position_ = std::copy_n(&image(qel::point2d(qel::internal::narrowed<short>(row), 0)), cols, position_);
  }

 private:
  const stop_sign& stop_;
  T* position_;
};

/// Sums planes up and keeps none. Each node counts once, with the number of its pixels.
template <typename T>
class plane_summer {
 public:
  plane_summer(const stop_sign& stop, const qel::image2d<T>& image) : stop_(stop), lowest_(lowest_of(image)) {}

  /// Those of the planes so far.
  const std::vector<plane_sums>& sums() const { return sums_; }

  template <typename Nodes, typename F>
  void filtered(const Nodes& nodes, const std::vector<F>& values) {
    stop_.check();
    std::vector<std::uint32_t> pixels(nodes.nnodes());
    for_each(nodes.table().number, [&](unsigned node) { ++pixels[node]; });
    for (const F& plane : values) {
      plane_sums sums;
      for (unsigned node = 0; node < pixels.size(); ++node) add(plane.element(node), pixels[node], sums);
      sums_.push_back(sums);
    }
  }

  void input(const qel::image2d<T>& image) {
    stop_.check();
    plane_sums sums;
    for_each(image, [&](T value) { add(value, 1, sums); });
    sums_.push_back(sums);
  }

 private:
  template <typename I, typename Use>
  static void for_each(const I& image, Use use) {
    typename I::domain_t::fwd_piter p(image.domain());
    for (p.start(); p.is_valid(); p.next()) use(image(p));
  }

  static T lowest_of(const qel::image2d<T>& image) {
    T lowest = image(image.domain().pmin());
    for_each(image, [&](T value) { lowest = std::min(lowest, value); });
    return lowest;
  }

  void add(T value, std::uint32_t pixels, plane_sums& sums) const {
    if (value <= lowest_) return;
    // Two values of 64 bits can be farther apart than their type holds; modulo 2^64 the distance is right.
    const auto distance = static_cast<double>(static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(lowest_));
    sums.values += pixels * distance;
    sums.squares += pixels * (distance * distance);
  }

  const stop_sign& stop_;
  T lowest_;
  std::vector<plane_sums> sums_;
};

}  // namespace python

#endif  // PYTHON_SRC_PLANE_SINKS_HPP

// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_PLANE_SINKS_HPP
#define PYTHON_SRC_PLANE_SINKS_HPP

// Where the planes of a profile go: sinks for `qel::morpho::attribute_profile`. Both look at the stop sign at each call.

#include "stop.hpp"
#include "typed_calls.hpp"

#include <qel/core/image2d.hpp>
#include <qel/morpho/profile_planes.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace python {

/// `qel::morpho::raster_planes` with a stop sign.
template <typename T>
class plane_writer {
 public:
  plane_writer(const stop_sign& stop, T* position) : stop_(stop), planes_(position) {}

  template <typename Nodes, typename V>
  void filtered(const Nodes& nodes, const qel::morpho::tree::plane_values<V>& values) {
    stop_.check();
    planes_.filtered(nodes, values);
  }

  void input(const qel::image2d<T>& image) {
    stop_.check();
    planes_.input(image);
  }

 private:
  const stop_sign& stop_;
  qel::morpho::raster_planes<T> planes_;
};

/// Sums planes up and keeps none. Each node counts once, with the number of its pixels.
template <typename T>
class plane_summer {
 public:
  plane_summer(const stop_sign& stop, const qel::image2d<T>& image) : stop_(stop), lowest_(lowest_of(image)) {}

  /// Those of the planes so far.
  const std::vector<plane_sums>& sums() const { return sums_; }

  template <typename Nodes, typename V>
  void filtered(const Nodes& nodes, const qel::morpho::tree::plane_values<V>& values) {
    stop_.check();
    std::vector<std::uint32_t> pixels(nodes.nnodes());
    for_each(nodes.table().number, [&](unsigned node) { ++pixels[node]; });
    for (std::size_t k = 0; k < values.size(); ++k) {
      plane_sums sums;
      for (unsigned node = 0; node < pixels.size(); ++node) add(values.of(node)[k], pixels[node], sums);
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

// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_TYPED_BODY_HPP
#define PYTHON_SRC_TYPED_BODY_HPP

// The bodies of typed_calls.hpp: from names and numbers to types.

#include "plane_sinks.hpp"
#include "settings.hpp"
#include "stop.hpp"
#include "typed_calls.hpp"

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/morpho/attribute/is_increasing.hpp>
#include <qel/morpho/attribute_profile.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/to_threshold.hpp>
#include <qel/morpho/tree/filter/named_rule.hpp>
#include <qel/scene/block_profile.hpp>
#include <qel/scene/window.hpp>
#include <qel/scene/window_memory.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace python {

namespace internal {

/// Calls `use(attribute)` with the attribute called `name` of images of type I.
template <typename I, typename Use>
void with_attribute(const std::string& name, Use use) {
  if (!qel::morpho::with_attribute<I>(name, use)) throw std::invalid_argument("there is no attribute " + name);
}

template <typename L>
std::vector<L> thresholds_of(const settings& wanted) {
  return qel::morpho::to_thresholds<L>(wanted.thresholds.data(), wanted.thresholds.size());
}

inline const qel::neighb2d& neighborhood_of(const settings& wanted) {
  return wanted.connectivity == 8 ? qel::c8() : qel::c4();
}

/// Gives `sink` the planes of `image`.
template <typename T, typename Sink>
void run_profile(const qel::image2d<T>& image, const settings& wanted, Sink& sink) {
  with_attribute<qel::image2d<T>>(wanted.attribute, [&](const auto& attribute) {
    using attribute_type = std::decay_t<decltype(attribute)>;
    const std::string name = wanted.rule.empty() ? attribute.default_rule : wanted.rule;
    const qel::morpho::tree::filter::named_rule rule(name,
                                                     [&] { throw std::invalid_argument("there is no rule " + name); });
    qel::morpho::attribute_profile(image, neighborhood_of(wanted), typename attribute_type::accumulator(),
                                   thresholds_of<typename attribute_type::threshold>(wanted), rule, sink);
  });
}

/// The planes of a block by the attribute A.
template <typename A, typename T>
void prove_block(const block_task& task, const settings& wanted, const scene_reader& read, T* planes) {
  using qel::scene::direction;
  const auto window_at = [&](const qel::scene::rectangle& place) {
    qel::scene::window<T> w(place);
    read(place, [&](const strided_image& pixels) {
      read_strided<T>(pixels, [&](std::int64_t row) { return &w.values(w.site(place.row + row, place.col)); });
    });
    return w;
  };
  const std::size_t n = wanted.thresholds.size();
  const auto put = [&](std::size_t plane, const std::vector<T>& pixels) {
    std::copy(pixels.begin(), pixels.end(), planes + plane * pixels.size());
  };
  qel::scene::block_report report;
  qel::scene::block_profile<T, A, decltype(window_at)> profile(
      task.scene, window_at, neighborhood_of(wanted), thresholds_of<typename A::result>(wanted), task.limits, report);
  profile.run(
      task.block, [&](const std::vector<T>& pixels) { put(n, pixels); },
      [&](direction d, const std::vector<qel::scene::block_plane<T>>& proved) {
        for (std::size_t k = 0; k < n; ++k) put(d == direction::dark ? n - 1 - k : n + 1 + k, proved[k].pixels);
      });
}

}  // namespace internal

template <typename T>
void write_profile(const qel::image2d<T>& image, const settings& wanted, const stop_sign& stop, T* planes) {
  plane_writer<T> sink(stop, planes);
  internal::run_profile(image, wanted, sink);
}

template <typename T>
std::vector<plane_sums> sum_profile(const qel::image2d<T>& image, const settings& wanted, const stop_sign& stop) {
  plane_summer<T> sink(stop, image);
  internal::run_profile(image, wanted, sink);
  return sink.sums();
}

template <typename T>
void write_block_profile(const block_task& task, const settings& wanted, const scene_reader& read, T* planes) {
  internal::with_attribute<qel::image2d<T>>(wanted.attribute, [&](const auto& attribute) {
    using A = typename std::decay_t<decltype(attribute)>::accumulator;
    if constexpr (qel::morpho::attribute::is_increasing<A>)
      internal::prove_block<A>(task, wanted, read, planes);
    else
      throw std::invalid_argument("blocks can't be proved by " + wanted.attribute);
  });
}

template <typename T>
window_needs needs_of_windows(const settings& wanted) {
  window_needs needs;
  internal::with_attribute<qel::image2d<T>>(wanted.attribute, [&](const auto& attribute) {
    using A = typename std::decay_t<decltype(attribute)>::accumulator;
    needs.bytes = qel::scene::window_bytes<T, A>();
    if constexpr (qel::morpho::attribute::is_increasing<A>)
      needs.reach = qel::scene::reach_of(internal::thresholds_of<typename A::result>(wanted));
  });
  return needs;
}

}  // namespace python

#endif  // PYTHON_SRC_TYPED_BODY_HPP

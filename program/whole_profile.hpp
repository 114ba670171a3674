// SPDX-License-Identifier: MIT
#ifndef PROGRAM_WHOLE_PROFILE_HPP
#define PROGRAM_WHOLE_PROFILE_HPP

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/morpho/attribute_profile.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/filter/named_rule.hpp>
#include <qel/morpho/tree/sweep/sweep_sites.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "program/failure.hpp"
#include "program/scene.hpp"

namespace program {

/// The pixels of a part of a window, row by row. \param value  gives the value at a site.
template <typename T, typename Value>
std::vector<T> pixels_of(const window<T>& w, const rectangle& part, Value value) {
  std::vector<T> pixels;
  pixels.reserve(static_cast<std::size_t>(part.pixels()));
  for (std::int64_t row = part.row; row < part.end_row(); ++row)
    for (std::int64_t col = part.col; col < part.end_col(); ++col) pixels.push_back(value(w.site(row, col)));
  return pixels;
}

/// The sink of `filter_planes` that keeps a part of each plane. A pixel without data keeps its value.
template <typename T>
class part_planes {
 public:
  part_planes(const window<T>& w, const rectangle& part, std::vector<std::vector<T>>& planes)
      : w_(w), part_(part), planes_(planes) {}

  template <typename Nodes>
  void filtered(const Nodes& nodes, const qel::morpho::tree::plane_values<T>& values) {
    const auto& number = nodes.table().number;
    for (std::size_t k = 0; k < values.size(); ++k)
      planes_.push_back(pixels_of(
          w_, part_, [&](const qel::point2d& p) { return w_.has_data(p) ? values.of(number(p))[k] : w_.values(p); }));
  }

 private:
  const window<T>& w_;
  rectangle part_;
  std::vector<std::vector<T>>& planes_;
};

/// Adds to `planes` those of one tree of a window by itself, as far as they lie in `part`, in the order of the thresholds.
///
/// \param A  the attribute.
/// \throws std::bad_alloc
template <typename A, typename T>
void add_planes(direction d, const window<T>& w, const rectangle& part, const qel::neighb2d& neighborhood,
                const std::vector<typename A::result>& thresholds, const std::string& rule,
                std::vector<std::vector<T>>& planes) {
  const qel::morpho::tree::sweep_sites<qel::image2d<T>> sites(w.values, d == direction::bright);
  const qel::morpho::tree::filter::named_rule by_name(rule, [&] { throw failure("there is no rule " + rule); });
  part_planes<T> sink(w, part, planes);
  qel::morpho::profile_of_tree(w.values, sites, neighborhood, A(), thresholds, by_name, sink);
}

}  // namespace program

#endif  // PROGRAM_WHOLE_PROFILE_HPP

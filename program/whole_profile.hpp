// SPDX-License-Identifier: MIT
#ifndef PROGRAM_WHOLE_PROFILE_HPP
#define PROGRAM_WHOLE_PROFILE_HPP

#include <qel/core/neighb2d.hpp>
#include <qel/morpho/attribute_profile.hpp>
#include <qel/morpho/tree/filter/named_rule.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "program/failure.hpp"
#include "program/scene.hpp"

namespace program {

/// The sink of `qel::morpho::attribute_profile` that hands planes on by strips of rows, so that no plane is kept.
///
/// \param Write  `write(plane, place, pixels)` takes pixels, row by row; planes count from 0.
template <typename T, typename Write>
class strip_planes {
 public:
  /// The part of the window that is handed on.
  strip_planes(const window<T>& w, const rectangle& part, Write write) : w_(w), part_(part), write_(std::move(write)) {}

  /// Planes of a tree. A pixel without data keeps its value.
  template <typename Nodes, typename F>
  void filtered(const Nodes& nodes, const std::vector<F>& values) {
    const auto& number = nodes.table().number;
    for (const F& plane : values)
      put([&](const qel::point2d& p) { return w_.has_data(p) ? plane.element(number(p)) : w_.values(p); });
  }

  /// The plane of the image itself.
  template <typename I>
  void input(const I& image) {
    put([&](const qel::point2d& p) { return image(p); });
  }

 private:
  template <typename Value>
  void put(Value value) {
    constexpr std::int64_t height = 256;  // of the tiles of files
    std::vector<T> pixels;
    for (std::int64_t top = part_.row; top < part_.end_row(); top += height) {
      const rectangle strip = intersection({top, part_.col, height, part_.cols}, part_);
      pixels.clear();
      for (std::int64_t row = strip.row; row < strip.end_row(); ++row)
        for (std::int64_t col = strip.col; col < strip.end_col(); ++col) pixels.push_back(value(w_.site(row, col)));
      write_(plane_, strip, pixels);
    }
    ++plane_;
  }

  const window<T>& w_;
  rectangle part_;
  Write write_;
  int plane_ = 0;
};

/// Gives `write` the 2N + 1 planes of a window by itself, as far as they lie in `part`.
///
/// \param A  the attribute.
/// \throws std::bad_alloc, and what `write` throws.
template <typename A, typename T, typename Write>
void write_profile(const window<T>& w, const rectangle& part, const qel::neighb2d& neighborhood,
                   const std::vector<typename A::result>& thresholds, const std::string& rule, Write write) {
  const qel::morpho::tree::filter::named_rule by_name(rule, [&] { throw failure("there is no rule " + rule); });
  qel::morpho::attribute_profile(w.values, neighborhood, A(), thresholds, by_name,
                                 strip_planes<T, Write>(w, part, std::move(write)));
}

}  // namespace program

#endif  // PROGRAM_WHOLE_PROFILE_HPP

// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PROFILE_SCENE_HPP
#define PROGRAM_PROFILE_SCENE_HPP

// The body of `profile_scene`: from names and numbers to the typed computation, whole or in blocks.

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/morpho/attribute/is_increasing.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/to_threshold.hpp>
#include <qel/scene/window_memory.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "program/describe.hpp"
#include "program/failure.hpp"
#include "program/job.hpp"
#include "program/plan.hpp"
#include "program/profile_file.hpp"
#include "program/progress.hpp"
#include "program/scene.hpp"
#include "program/whole_profile.hpp"

namespace program {
namespace internal {

/// The computation of one job on values of type T by the attribute A.
template <typename T, typename A>
class scene_profile {
 public:
  using threshold = typename A::result;
  static constexpr bool provable = qel::morpho::attribute::is_increasing<A>;

  scene_profile(const job& j, const qel::morpho::named_attribute<A>& attribute)
      : job_(j),
        rule_(j.wanted.rule.empty() ? attribute.default_rule : j.wanted.rule),
        neighborhood_(j.wanted.connectivity == 8 ? qel::c8() : qel::c4()),
        thresholds_(converted(j.wanted.thresholds)),
        planes_(2 * static_cast<int>(thresholds_.size()) + 1),
        task_(task_of()),
        plan_(make_plan(task_)),
        file_(j.wanted.output, {j.wanted.driver, j.wanted.creation_options}, j.scene, j.part, j.bands, planes_,
              j.errors),
        progress_(j.show_progress, static_cast<std::int64_t>(j.bands.size()) * planes_ * j.part.pixels()) {
    describe(attribute.name);
  }

  block_report run() {
    for (std::size_t b = 0; b < job_.bands.size(); ++b) {
      first_plane_ = static_cast<int>(b) * planes_ + 1;
      if (!plan_.side)
        write_windows(job_.bands[b], job_.scene.extent());
      else if constexpr (provable)
        write_proved_blocks(job_.bands[b]);
      else
        write_windows(job_.bands[b], job_.part);
    }
    file_.finish();
    return report_;
  }

 private:
  static std::vector<threshold> converted(const std::vector<double>& numbers) {
    std::vector<threshold> thresholds;
    thresholds.reserve(numbers.size());
    for (const double number : numbers) thresholds.push_back(qel::morpho::to_threshold<threshold>(number));
    return thresholds;
  }

  task task_of() const {
    const request& r = job_.wanted;
    const std::int64_t kept = provable ? static_cast<std::int64_t>(thresholds_.size() * sizeof(T)) : 0;
    return {job_.scene.extent(),
            job_.part,
            qel::scene::window_bytes<T, A>(),
            kept,
            r.memory.value_or(default_memory()),
            r.block,
            r.overlap,
            provable ? qel::scene::reach_of(thresholds_) : 256,
            provable,
            r.inexact};
  }

  void describe(const std::string& attribute) {
    const bool exact = provable || !plan_.side;
    for (const auto& [name, value] : settings_of(job_.wanted, attribute, rule_, thresholds_, job_.bands, exact))
      file_.set_metadata(name, value);
    int number = 1;
    for (const int band : job_.bands)
      for (const std::string& text : plane_descriptions(band, attribute, thresholds_)) file_.describe(number++, text);
  }

  /// Writes pixels of plane `plane` of the band, from 0.
  void write(int plane, const rectangle& place, const std::vector<T>& pixels) {
    file_.write(first_plane_ + plane, place, pixels);
    progress_.advance(place.pixels());
  }

  /// Every window by itself, rules and all. The whole scene is one; windows around blocks are not exact.
  void write_windows(int band, const rectangle& region) {
    const std::int64_t side = plan_.side.value_or(std::max(region.rows, region.cols));
    for (const rectangle& block : blocks_of(region, side)) {
      const rectangle place = window_around(block, plan_.limits.first_overlap, job_.scene.extent());
      const window<T> w = job_.scene.template read<T>(band, place);
      stop_if_signalled();
      write_profile<A>(w, intersection(block, job_.part), neighborhood_, thresholds_, rule_,
                       [&](auto... strip) { write(strip...); });
      ++report_.blocks;
    }
    report_.largest_overlap = plan_.limits.first_overlap;
  }

  /// Blocks whose planes are those of the whole scene; under any rule, as the four agree.
  void write_proved_blocks(int band) {
    const auto read = [&](const rectangle& place) {
      stop_if_signalled();
      return job_.scene.template read<T>(band, place);
    };
    const int n = static_cast<int>(thresholds_.size());
    block_profile<T, A, decltype(read)> profile(job_.scene.extent(), read, neighborhood_, thresholds_, plan_.limits,
                                                report_);
    for (const rectangle& block : blocks_of(job_.part, *plan_.side)) try {
        profile.run(
            block, [&](const std::vector<T>& pixels) { write(n, block, pixels); },
            [&](direction d, const std::vector<block_plane<T>>& planes) {
              for (int k = 0; k < n; ++k)
                write(d == direction::dark ? n - 1 - k : n + 1 + k, block, planes[static_cast<std::size_t>(k)].pixels);
            });
      } catch (const not_provable& why) {
        refuse(why);
      }
  }

  [[noreturn]] void refuse(const not_provable& why) const {
    const rectangle& b = why.block;
    throw failure("threshold " + text_of(thresholds_[why.threshold]) + " can't be proved for the block at column " +
                  text_of(b.col) + ", row " + text_of(b.row) + " (" + text_of(b.cols) + " x " + text_of(b.rows) +
                  ") by what fits into " + text_of(task_.memory) + " MB; more --memory helps, or a smaller threshold");
  }

  const job& job_;
  std::string rule_;
  const qel::neighb2d& neighborhood_;
  std::vector<threshold> thresholds_;
  int planes_;
  task task_;
  plan plan_;
  profile_file file_;
  progress progress_;
  block_report report_;
  int first_plane_ = 1;
};

}  // namespace internal

template <typename T>
block_report profile_scene(const job& j) {
  block_report report;
  const auto computed = [&](const auto& attribute) {
    using A = typename std::decay_t<decltype(attribute)>::accumulator;
    if (!attribute.is_called(j.wanted.attribute)) return false;
    report = internal::scene_profile<T, A>(j, attribute).run();
    return true;
  };
  std::apply([&](const auto&... attributes) { (computed(attributes) || ...); },
             qel::morpho::named_attributes<qel::image2d<T>>);
  return report;
}

}  // namespace program

#endif  // PROGRAM_PROFILE_SCENE_HPP

// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PROFILE_SCENE_HPP
#define PROGRAM_PROFILE_SCENE_HPP

// The body of `profile_scene`: from names and numbers to the typed computation, whole or in blocks, or to parts that are
// put together.

#include <oneapi/tbb/enumerable_thread_specific.h>
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
#include <type_traits>
#include <vector>

#include "program/block_planes.hpp"
#include "program/describe.hpp"
#include "program/extremes.hpp"
#include "program/failure.hpp"
#include "program/job.hpp"
#include "program/memory_gate.hpp"
#include "program/part_files.hpp"
#include "program/pipeline.hpp"
#include "program/plan.hpp"
#include "program/profile_file.hpp"
#include "program/progress.hpp"
#include "program/scene.hpp"
#include "program/scene_file.hpp"
#include "program/text.hpp"

namespace program {
namespace internal {

/// What a worker does at a time: planes of a band on a block.
struct step {
  std::size_t band;  ///< index
  rectangle block;
  halves wanted;
};

/// What comes of a step.
template <typename T>
struct step_result {
  step of;
  block_planes<T> planes;
  block_report report;
};

/// What belongs to one thread: GDAL's datasets serve one at a time.
struct worker {
  explicit worker(const job& j) : errors(!j.wanted.quiet), scene(j.scene.path(), errors), parts(j.parts, errors) {}

  gdal_errors errors;
  scene_file scene;
  part_reader parts;
};

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
        thresholds_(qel::morpho::to_thresholds<threshold>(j.wanted.thresholds.data(), j.wanted.thresholds.size())),
        planes_(2 * thresholds_.size() + 1),
        task_(task_of()),
        plan_(make_plan(task_)),
        settings_(settings_of(j.wanted, attribute.name, rule_, thresholds_, j.bands, is_exact())),
        file_(file_for_planes()),
        progress_(j.show_progress, static_cast<std::int64_t>(j.bands.size() * planes_) * j.part.pixels()),
        gate_(plan_.windows),
        workers_([&j] { return worker(j); }) {
    if (file_.has_strips()) plan_ = in_strips(plan_, task_);
    describe(attribute.name);
    if (!computes_proved_blocks() || proved_thresholds().size() == thresholds_.size()) return;
    for (const int band : j.bands) extremes_.push_back(extremes_of<T>(j.scene, band));
  }

  block_report run() {
    const std::vector<step> steps = all_steps();
    run_in_order<step_result<T>>(
        job_.jobs, most_in_flight(steps), steps.size(), [&](std::size_t k) { return result_of(steps[k]); },
        [&](const step_result<T>& result) { write(result); });
    file_.finish();
    return report_;
  }

 private:
  /// Those that a block can prove.
  std::vector<threshold> proved_thresholds() const {
    std::vector<threshold> proved;
    for (const threshold t : thresholds_)
      if (!provable || !is_for_whole(t, job_.scene.extent())) proved.push_back(t);
    return proved;
  }

  task task_of() const {
    const request& r = job_.wanted;
    return {job_.scene.extent(),
            job_.part,
            qel::scene::window_bytes<T, A>(),
            static_cast<std::int64_t>(planes_ * sizeof(T)),
            job_.memory,
            r.block,
            r.overlap,
            provable ? qel::scene::reach_of(proved_thresholds()) : 256,  // of no meaning where nothing is proved
            provable || !job_.parts.empty(),
            r.inexact};
  }

  bool computes_proved_blocks() const { return provable && !plan_.whole && job_.parts.empty(); }

  bool is_exact() const {
    if (provable) return true;
    return job_.parts.empty() ? plan_.whole : job_.parts.common("EXACT") == "YES";
  }

  /// The output. Parts are looked at first, as long as nothing is written.
  profile_file file_for_planes() const {
    const request& r = job_.wanted;
    const auto bands = job_.bands.size() * planes_;
    if (!job_.parts.empty()) job_.parts.check(settings_, static_cast<int>(bands));
    const bool has_values_of_scene = provable || rule_ != qel::morpho::tree::filter::rule::sub::name;
    return profile_file(r.output, {r.driver, r.creation_options, job_.jobs, has_values_of_scene}, job_.scene, job_.part,
                        job_.bands, static_cast<int>(planes_), job_.errors);
  }

  void describe(const std::string& attribute) {
    for (const auto& [name, value] : settings_) file_.set_metadata(name, value);
    const rectangle& part = job_.part;
    const bool is_part = job_.wanted.srcwin && job_.parts.empty();
    file_.set_metadata(place_key, is_part ? list_of(std::vector{part.col, part.row, part.cols, part.rows}) : "");
    int number = 1;
    for (const int band : job_.bands) {
      const std::string name = job_.scene.band(band).GetDescription();
      for (const std::string& text :
           plane_descriptions(name.empty() ? "band " + std::to_string(band) : name, attribute, thresholds_))
        file_.describe(number++, text);
    }
  }

  /// The steps in the order in which they are written. The trees of the whole scene are a step each, if there are cores for
  /// both.
  std::vector<step> all_steps() const {
    const bool halved = plan_.whole && job_.parts.empty() && job_.jobs > 1 && !file_.is_interleaved_by_pixel();
    std::vector<step> steps;
    for (std::size_t band = 0; band < job_.bands.size(); ++band)
      for (const rectangle& block : qel::scene::blocks_of(job_.part, plan_.rows, plan_.cols))
        if (halved)
          steps.insert(steps.end(), {{band, block, {true, false}}, {band, block, {false, true}}});
        else
          steps.push_back({band, block, {}});
    return steps;
  }

  /// Twice as many as jobs, so that these go on while results wait for those before them; less if memory is short.
  std::size_t most_in_flight(const std::vector<step>& steps) const {
    const halves& first = steps.front().wanted;
    const std::size_t kept = first.dark && first.bright ? planes_ : thresholds_.size() + 1;
    const std::int64_t bytes = steps.front().block.pixels() * static_cast<std::int64_t>(kept * sizeof(T));
    return static_cast<std::size_t>(std::clamp<std::int64_t>(plan_.planes / bytes, 1, 2 * std::int64_t{job_.jobs}));
  }

  step_result<T> result_of(const step& s) {
    stop_if_signalled();
    step_result<T> result = {s, {}, {}};
    worker& w = workers_.local();
    if (!job_.parts.empty())
      result.planes = joined(s, w);
    else if (computes_proved_blocks())
      result.planes = proved(s, w, result.report);
    else
      result.planes = windowed(s, w, result.report);
    return result;
  }

  /// The whole scene, or a window around a block that proves nothing.
  block_planes<T> windowed(const step& s, worker& w, block_report& report) {
    const rectangle& scene = job_.scene.extent();
    const rectangle place = plan_.whole ? scene : window_around(s.block, plan_.limits.first_overlap, scene);
    window_reader<T> read = reader(s, w);
    report.blocks = s.wanted.bright ? 1 : 0;
    report.largest_overlap = plan_.limits.first_overlap;
    return planes_of_window<A>(read(place), s.block, s.wanted, neighborhood_, thresholds_, rule_);
  }

  block_planes<T> proved(const step& s, worker& w, block_report& report) {
    window_reader<T> read = reader(s, w);
    const std::vector<threshold> thresholds = proved_thresholds();
    try {
      const rectangle& scene = job_.scene.extent();
      auto planes = proved_planes<A>(scene, read, s.block, neighborhood_, thresholds, plan_.limits, report);
      return extremes_.empty() ? planes : with_flat_planes(s, read, std::move(planes));
    } catch (const not_provable& why) {
      refuse(why, thresholds);
    }
  }

  /// `planes` with those of the thresholds that no block proves. Pixels without data keep their values.
  block_planes<T> with_flat_planes(const step& s, window_reader<T>& read, block_planes<T> planes) const {
    const window<T> w = read(s.block);
    const auto flat = [&](T value) {
      return pixels_of(w, s.block, [&](const qel::point2d& p) { return w.has_data(p) ? value : w.values(p); });
    };
    auto proved = planes.begin();
    block_planes<T> all;
    for (auto t = thresholds_.rbegin(); t != thresholds_.rend(); ++t)
      all.push_back(is_for_whole(*t, job_.scene.extent()) ? flat(extremes_[s.band].greatest) : std::move(*proved++));
    all.push_back(std::move(*proved++));
    for (const threshold t : thresholds_)
      all.push_back(is_for_whole(t, job_.scene.extent()) ? flat(extremes_[s.band].least) : std::move(*proved++));
    return all;
  }

  /// Planes from parts. One of them is the input, which tells whether the parts are of this scene.
  block_planes<T> joined(const step& s, worker& w) {
    auto planes = w.parts.template read<T>(static_cast<int>(s.band * planes_) + 1, planes_, s.block);
    window_reader<T> read = reader(s, w);
    const window<T> input = read(s.block);
    if (pixels_of(input, s.block, [&](const qel::point2d& p) { return input.values(p); }) != planes[thresholds_.size()])
      w.parts.refuse(s.block, "or another one near it has been made of another scene");
    return planes;
  }

  window_reader<T> reader(const step& s, worker& w) { return {w.scene, job_.bands[s.band], gate_, task_.window_bytes}; }

  void write(const step_result<T>& result) {
    const std::size_t first = result.of.band * planes_ + (result.of.wanted.dark ? 0 : thresholds_.size());
    file_.write(static_cast<int>(first) + 1, result.of.block, result.planes);
    progress_.advance(static_cast<std::int64_t>(result.planes.size()) * result.of.block.pixels());
    report_.blocks += result.report.blocks;
    report_.pixels_again += result.report.pixels_again;
    report_.largest_overlap = std::max(report_.largest_overlap, result.report.largest_overlap);
  }

  [[noreturn]] void refuse(const not_provable& why, const std::vector<threshold>& thresholds) const {
    const rectangle& b = why.block;
    throw failure("threshold " + text_of(thresholds[why.threshold]) + " can't be proved for the block at column " +
                  text_of(b.col) + ", row " + text_of(b.row) + " (" + text_of(b.cols) + " x " + text_of(b.rows) +
                  ") by what fits into " + text_of(task_.memory) + " MB; more --memory helps, or a smaller threshold");
  }

  const job& job_;
  std::string rule_;
  const qel::neighb2d& neighborhood_;
  std::vector<threshold> thresholds_;
  std::size_t planes_;  ///< of a band
  task task_;
  plan plan_;
  settings settings_;
  profile_file file_;
  progress progress_;
  memory_gate gate_;
  oneapi::tbb::enumerable_thread_specific<worker> workers_;
  std::vector<extremes<T>> extremes_;  ///< of each band, if there are thresholds that no block proves
  block_report report_;
};

}  // namespace internal

template <typename T>
block_report profile_scene(const job& j) {
  block_report report;
  qel::morpho::with_attribute<qel::image2d<T>>(j.wanted.attribute, [&](const auto& attribute) {
    using A = typename std::decay_t<decltype(attribute)>::accumulator;
    report = internal::scene_profile<T, A>(j, attribute).run();
  });
  return report;
}

}  // namespace program

#endif  // PROGRAM_PROFILE_SCENE_HPP

// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PIPELINE_HPP
#define PROGRAM_PIPELINE_HPP

#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_pipeline.h>
#include <oneapi/tbb/task_arena.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace program {

/// Calls `write(compute(k))` for k from 0 to `count` - 1: `compute` on `jobs` threads, `write` one after the other, in the
/// order of k. So what is written does not depend on `jobs`.
///
/// \param most_in_flight  results that are computed or wait to be written, at most.
/// \throws what `compute` and `write` throw, the first of it; then nothing new is begun.
template <typename Result, typename Compute, typename Write>
void run_in_order(int jobs, std::size_t most_in_flight, std::size_t count, Compute compute, Write write) {
  namespace tbb = oneapi::tbb;
  const auto threads = static_cast<std::size_t>(jobs);
  const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, threads);
  // Results stay here: those that an exception leaves in the middle of the pipeline would be lost in there.
  std::vector<std::optional<Result>> results(count);
  std::size_t next = 0;
  const auto number = [&](tbb::flow_control& flow) {
    if (next == count) flow.stop();
    return next++;
  };
  const auto compute_result = [&](std::size_t k) {
    results[k].emplace(compute(k));
    return k;
  };
  const auto write_result = [&](std::size_t k) {
    write(*results[k]);
    results[k].reset();
  };
  tbb::task_arena(jobs).execute([&] {
    tbb::parallel_pipeline(most_in_flight,
                           tbb::make_filter<void, std::size_t>(tbb::filter_mode::serial_in_order, number) &
                               tbb::make_filter<std::size_t, std::size_t>(tbb::filter_mode::parallel, compute_result) &
                               tbb::make_filter<std::size_t, void>(tbb::filter_mode::serial_in_order, write_result));
  });
}

}  // namespace program

#endif  // PROGRAM_PIPELINE_HPP

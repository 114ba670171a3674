// SPDX-License-Identifier: MIT

// attribute-profile: attribute profiles from raster file to raster file.

#include <gdal_priv.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "program/cores.hpp"
#include "program/failure.hpp"
#include "program/gdal_errors.hpp"
#include "program/job.hpp"
#include "program/output_driver.hpp"
#include "program/part_files.hpp"
#include "program/pixel_type.hpp"
#include "program/plan.hpp"
#include "program/progress.hpp"
#include "program/request.hpp"
#include "program/scene_file.hpp"

namespace {

using namespace program;
using seconds = std::chrono::duration<double>;

rectangle part_of(const request& r, const rectangle& scene) {
  if (!r.srcwin) return scene;
  const auto& [col, row, cols, rows] = *r.srcwin;
  const auto is_within = [](std::int64_t begin, std::int64_t size, std::int64_t all) {
    return begin >= 0 && size >= 1 && size <= all && begin <= all - size;
  };
  if (!is_within(col, cols, scene.cols) || !is_within(row, rows, scene.rows))
    throw failure("--srcwin is not within the scene, which has " + std::to_string(scene.cols) + " x " +
                  std::to_string(scene.rows) + " pixels (columns x rows)");
  return {row, col, rows, cols};
}

void print_summary(const block_report& report, const job& j, double time) {
  const double pixels = static_cast<double>(j.part.pixels()) * static_cast<double>(j.bands.size());
  const auto blocks = static_cast<long long>(report.blocks);
  if (j.parts.empty())
    static_cast<void>(std::printf(
        "%lld block%s, %.3g %% of the pixels read again, largest overlap %lld pixels; ", blocks, blocks == 1 ? "" : "s",
        100 * static_cast<double>(report.pixels_again) / pixels, static_cast<long long>(report.largest_overlap)));
  static_cast<void>(std::printf("%d job%s, %.2f s, %.2f million pixels a second\n", j.jobs, j.jobs == 1 ? "" : "s",
                                time, pixels / time / 1e6));
}

void run(request r) {
  const auto start = std::chrono::steady_clock::now();
  gdal_errors errors(!r.quiet);
  const gdal_errors::scope scope(errors);
  errors.take_from_all_threads();
  GDALAllRegister();
  if (r.driver.empty()) r.driver = format_of(r.output);
  const std::int64_t memory = r.memory.value_or(default_memory());
  GDALSetCacheMax64(GIntBig{cache_memory(memory)} << 20);
  const scene_file scene(r.input, errors);
  const rectangle part = part_of(r, scene.extent());
  const bool show_progress = !r.quiet && isatty(STDOUT_FILENO) != 0;
  const std::vector<int> bands = scene.usable_bands(r.bands);
  const part_files parts = r.parts.empty() ? part_files() : part_files(r.parts, part, errors);
  const job j = {r, scene, part, bands, parts, r.jobs.value_or(usable_cores()), memory, show_progress, errors};
  errors.check("can't open " + r.input);
  catch_signals();
  block_report report;
  with_pixel_type(scene.band(j.bands.front()),
                  [&](auto tag) { report = profile_scene<typename decltype(tag)::type>(j); });
  if (!r.quiet) print_summary(report, j, seconds(std::chrono::steady_clock::now() - start).count());
}

int fail(const char* text) {
  static_cast<void>(std::fprintf(stderr, "attribute-profile: %s\n", text));
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  const command_line line = read_command_line(argc, argv);
  if (!line.wanted) return line.status;
  try {
    run(*line.wanted);
    return EXIT_SUCCESS;
  } catch (const std::bad_alloc&) {
    return fail("out of memory; give less --memory");
  } catch (const std::exception& problem) {
    return fail(problem.what());
  }
}

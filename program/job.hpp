// SPDX-License-Identifier: MIT
#ifndef PROGRAM_JOB_HPP
#define PROGRAM_JOB_HPP

#include <cstdint>
#include <vector>

#include "program/gdal_errors.hpp"
#include "program/part_files.hpp"
#include "program/request.hpp"
#include "program/scene.hpp"
#include "program/scene_file.hpp"

namespace program {

/// What is asked for, and the files for it.
struct job {
  const request& wanted;
  const scene_file& scene;
  rectangle part;           ///< of the scene: what is written
  std::vector<int> bands;   ///< at least one, all of one type
  const part_files& parts;  ///< if there are some they are put together, and nothing is computed
  int jobs;                 ///< side by side
  std::int64_t memory;      ///< megabytes, for all of them
  bool show_progress;
  gdal_errors& errors;
};

/// Computes and writes the profile of a scene whose bands have values of type T. One translation unit for each type.
///
/// \throws failure, std::bad_alloc
template <typename T>
block_report profile_scene(const job& j);

}  // namespace program

#endif  // PROGRAM_JOB_HPP

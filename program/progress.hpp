// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PROGRESS_HPP
#define PROGRAM_PROGRESS_HPP

#include <cpl_progress.h>

#include <cstdint>

namespace program {

/// Lets SIGHUP, SIGINT and SIGTERM end the program at the next step, so that it can delete what is not complete. A signal
/// that is ignored stays so.
void catch_signals();

/// Throws a `failure` if such a signal has come.
void stop_if_signalled();

/// GDAL's progress bar.
class progress {
 public:
  /// \param total  steps, in a unit of the caller's.
  progress(bool shown, std::int64_t total) : shown_(shown), total_(total) {}

  /// \throws failure after a signal.
  void advance(std::int64_t steps) {
    stop_if_signalled();
    done_ += steps;
    if (shown_) GDALTermProgress(static_cast<double>(done_) / static_cast<double>(total_), nullptr, nullptr);
  }

 private:
  bool shown_;
  std::int64_t total_;
  std::int64_t done_ = 0;
};

}  // namespace program

#endif  // PROGRAM_PROGRESS_HPP

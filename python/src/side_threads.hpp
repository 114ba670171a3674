// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_SIDE_THREADS_HPP
#define PYTHON_SRC_SIDE_THREADS_HPP

// Computations in threads of their own, while the calling thread waits and listens to signals: so Ctrl-C ends a call
// that is deep in the library.
//
// A call that ends early leaves its threads behind. They go on until the library calls back next and sees the stop sign,
// at worst when the tree is made that they are at. What they touch until then is theirs alone, by `shared_ptr`: the
// state here, which holds what the tasks hold. What belongs to the caller they read under `source`, and no more after
// the call has ended.

#include "stop.hpp"

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace python {

/// What the threads of a call share.
struct side_work {
  /// Computes task `k`. What it captures lives as long as the last thread.
  std::function<void(std::size_t k)> task;
  std::size_t tasks = 0;
  stop_sign stop;
  std::mutex source;  ///< held while the caller's memory is read; look at `stop` then

  std::mutex lock;  ///< guards what follows
  std::condition_variable changed;
  std::size_t started = 0;
  std::size_t finished = 0;
  std::vector<std::exception_ptr> failures;  ///< one for each task
};

/// Runs the tasks, `workers` at a time at most, and raises the exception of the first one that failed, if any.
///
/// Called with the interpreter's lock, which is released while it waits. `after(finished)` is called with the lock
/// whenever tasks have finished.
///
/// \throws what a task throws; pybind11::error_already_set if a signal handler or `after` raises an exception.
void run_aside(const std::shared_ptr<side_work>& work, std::size_t workers,
               const std::function<void(std::size_t finished)>& after);

/// Waits for the threads that calls have left behind: before the process ends, because they use what is static.
void wait_for_left_threads();

}  // namespace python

#endif  // PYTHON_SRC_SIDE_THREADS_HPP

// SPDX-License-Identifier: MIT
#include "side_threads.hpp"

#include <pybind11/pybind11.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <list>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

namespace python {

namespace {

/// A thread, and whether it is about to end: then to join it takes no time.
struct side_thread {
  std::shared_ptr<std::atomic<bool>> done = std::make_shared<std::atomic<bool>>(false);
  std::thread thread;
};

std::mutex left_lock;

/// Never destroyed: where the process ends without waiting for threads, they may still run.
std::list<side_thread>& left_threads() {
  static auto* const threads = new std::list<side_thread>();
  return *threads;
}

void leave(std::list<side_thread>& threads) {
  const std::lock_guard<std::mutex> guard(left_lock);
  left_threads().splice(left_threads().end(), threads);
}

void join_those_that_ended() {
  const std::lock_guard<std::mutex> guard(left_lock);
  left_threads().remove_if([](side_thread& t) {
    if (*t.done) t.thread.join();
    return !t.thread.joinable();
  });
}

/// Takes the next task until there is none, or the call has ended.
void work_on(side_work& work) {
  std::unique_lock<std::mutex> guard(work.lock);
  while (work.started < work.tasks) {
    const std::size_t k = work.started++;
    guard.unlock();
    std::exception_ptr failure;
    try {
      work.stop.check();
      work.task(k);
    } catch (...) {
      failure = std::current_exception();
    }
    guard.lock();
    work.failures[k] = failure;
    ++work.finished;
    work.changed.notify_all();
  }
}

side_thread begin_thread(const std::shared_ptr<side_work>& work) {
  side_thread result;
  result.thread = std::thread([held = work, done = result.done]() mutable {
    work_on(*held);
    held.reset();  // what it holds goes before the thread counts as ended
    *done = true;
  });
  return result;
}

/// As many threads as there can be, `count` at most. \throws std::bad_alloc if there can be none.
void begin_threads(const std::shared_ptr<side_work>& work, std::size_t count, std::list<side_thread>& threads) {
  while (threads.size() < count) try {
      threads.push_back(begin_thread(work));
    } catch (const std::system_error&) {
      if (threads.empty()) throw std::bad_alloc();
      return;
    }
}

void wait_for_change(side_work& work, std::size_t& finished) {
  const pybind11::gil_scoped_release released;
  std::unique_lock<std::mutex> guard(work.lock);
  work.changed.wait_for(guard, std::chrono::milliseconds(100), [&] { return work.finished != finished; });
  finished = work.finished;
}

void wait_for_tasks(side_work& work, const std::function<void(std::size_t)>& after) {
  for (std::size_t finished = 0, told = 0; finished < work.tasks;) {
    wait_for_change(work, finished);
    if (PyErr_CheckSignals() != 0) throw pybind11::error_already_set();
    if (finished != told) after(told = finished);
  }
}

}  // namespace

void run_aside(const std::shared_ptr<side_work>& work, std::size_t workers,
               const std::function<void(std::size_t)>& after) {
  join_those_that_ended();
  work->failures.resize(work->tasks);
  std::list<side_thread> threads;
  try {
    begin_threads(work, std::min(workers, work->tasks), threads);
    wait_for_tasks(*work, after);
  } catch (...) {
    work->stop.raise();
    {
      const pybind11::gil_scoped_release released;
      const std::lock_guard<std::mutex> nobody_reads(work->source);
    }
    leave(threads);
    throw;
  }
  for (side_thread& t : threads) t.thread.join();
  for (const std::exception_ptr& failure : work->failures)
    if (failure) std::rethrow_exception(failure);
}

void wait_for_left_threads() {
  const pybind11::gil_scoped_release released;
  const std::lock_guard<std::mutex> guard(left_lock);
  for (side_thread& t : left_threads()) t.thread.join();
  left_threads().clear();
}

}  // namespace python

// SPDX-License-Identifier: MIT
#include "program/progress.hpp"

#include <atomic>
#include <csignal>

#include "program/failure.hpp"

namespace program {
namespace {

std::atomic<bool> signalled = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal may come while it is read");

extern "C" void remember_signal(int number) {
  signalled = true;
  static_cast<void>(std::signal(number, SIG_DFL));  // a second one ends the program at once
}

}  // namespace

void catch_signals() {
  for (const int number : {SIGHUP, SIGINT, SIGTERM})
    if (std::signal(number, remember_signal) == SIG_IGN)  // nohup, or a shell's background
      static_cast<void>(std::signal(number, SIG_IGN));
}

void stop_if_signalled() {
  if (signalled) throw failure("stopped by a signal; nothing is written");
}

}  // namespace program

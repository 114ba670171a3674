// SPDX-License-Identifier: MIT
#include "program/progress.hpp"

#include <csignal>

#include "program/failure.hpp"

namespace program {
namespace {

volatile std::sig_atomic_t signalled = 0;

extern "C" void remember_signal(int number) {
  signalled = 1;
  static_cast<void>(std::signal(number, SIG_DFL));  // a second one ends the program at once
}

}  // namespace

void catch_signals() {
  for (const int number : {SIGINT, SIGTERM}) static_cast<void>(std::signal(number, remember_signal));
}

void stop_if_signalled() {
  if (signalled != 0) throw failure("stopped by a signal; nothing is written");
}

}  // namespace program

// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_STOP_HPP
#define PYTHON_SRC_STOP_HPP

#include <atomic>

namespace python {

/// Ends a computation whose result nobody waits for any more.
struct stopped {};

/// Whether to go on. Asked where the library calls back.
class stop_sign {
 public:
  /// Set by the thread that waits.
  void raise() { raised_ = true; }

  /// \throws stopped if the sign is raised.
  void check() const {
    if (raised_) throw stopped();
  }

 private:
  std::atomic<bool> raised_{false};
};

}  // namespace python

#endif  // PYTHON_SRC_STOP_HPP

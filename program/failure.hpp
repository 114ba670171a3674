// SPDX-License-Identifier: MIT
#ifndef PROGRAM_FAILURE_HPP
#define PROGRAM_FAILURE_HPP

#include <stdexcept>

namespace program {

/// What ends the program with one line on standard error and exit status 1.
struct failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace program

#endif  // PROGRAM_FAILURE_HPP

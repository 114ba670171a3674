// SPDX-License-Identifier: MIT
#ifndef PROGRAM_WARN_HPP
#define PROGRAM_WARN_HPP

#include <cstdio>
#include <string>

namespace program {

/// Prints a line of warning on standard error.
inline void warn(const std::string& text) {
  static_cast<void>(std::fprintf(stderr, "attribute-profile: warning: %s\n", text.c_str()));
}

}  // namespace program

#endif  // PROGRAM_WARN_HPP

// SPDX-License-Identifier: MIT
#ifndef ENTRY_USAGE_HPP
#define ENTRY_USAGE_HPP

namespace entry {

/// Prints the usage text on the host's console, line by line.
void print_usage();

}  // namespace entry

#endif  // ENTRY_USAGE_HPP

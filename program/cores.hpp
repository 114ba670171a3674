// SPDX-License-Identifier: MIT
#ifndef PROGRAM_CORES_HPP
#define PROGRAM_CORES_HPP

namespace program {

/// The cores that this process may use: those of its affinity, and no more than the quota of its control groups. So what
/// a batch engine or a container grants is kept.
int usable_cores();

}  // namespace program

#endif  // PROGRAM_CORES_HPP

// SPDX-License-Identifier: MIT

// Lets the MATLAB module load on systems with an older C library than the one it was built with.
//
// The C++ run-time inside the module asks for two symbols of later versions of glibc. Both are defined here, and the
// linker keeps them out of the module's exports.

#include <pthread.h>

extern "C" {

// The name is the C library's (glibc 2.32). Zero means "there may be threads": reference counts change by atomic
// operations, which is right in any process.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
char __libc_single_threaded = 0;

int pthread_once_of_glibc_2_2_5(pthread_once_t* control, void (*routine)());
__asm__(".symver pthread_once_of_glibc_2_2_5, pthread_once@GLIBC_2.2.5");

/// The same operation by its first version, which every glibc for x86-64 has. glibc 2.34 moved it from libpthread to
/// libc with a new version.
int pthread_once(pthread_once_t* control, void (*routine)()) { return pthread_once_of_glibc_2_2_5(control, routine); }

}  // extern "C"

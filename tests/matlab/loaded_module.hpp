// SPDX-License-Identifier: MIT
#ifndef TESTS_MATLAB_LOADED_MODULE_HPP
#define TESTS_MATLAB_LOADED_MODULE_HPP

#include <stdexcept>

/// The finished module, MODULE_FILE, loaded as a host loads it.
namespace loaded_module {

/// What the module exports under `name`, or null. Each system has its own.
void* symbol(const char* name);

/// The module's function, not this program's of the same name.
template <typename F>
F* exported(const char* name) {
  if (void* const found = symbol(name)) return reinterpret_cast<F*>(found);
  throw std::runtime_error("cannot load the module or find its function");
}

}  // namespace loaded_module

#endif  // TESTS_MATLAB_LOADED_MODULE_HPP

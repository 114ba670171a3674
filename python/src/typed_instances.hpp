// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_TYPED_INSTANCES_HPP
#define PYTHON_SRC_TYPED_INSTANCES_HPP

// What each file of src/types instantiates.

#include "typed_body.hpp"

#define PYTHON_TYPED_CALLS(T)                                                                                         \
  template void python::write_profile(const qel::image2d<T>&, const python::settings&, const python::stop_sign&, T*); \
  template std::vector<python::plane_sums> python::sum_profile(const qel::image2d<T>&, const python::settings&,       \
                                                               const python::stop_sign&);                             \
  template void python::write_block_profile(const python::block_task&, const python::settings&,                       \
                                            const python::scene_reader&, T*);                                         \
  template python::window_needs python::needs_of_windows<T>(const python::settings&)

#endif  // PYTHON_SRC_TYPED_INSTANCES_HPP

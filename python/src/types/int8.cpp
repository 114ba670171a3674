// SPDX-License-Identifier: MIT
#include "../typed_instances.hpp"

#include <cstdint>

PYTHON_TYPED_CALLS(std::int8_t);

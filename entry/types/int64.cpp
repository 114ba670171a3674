// SPDX-License-Identifier: MIT
#include "entry/dispatch.hpp"

#include <cstdint>

template void compute_attribute_profile<std::int64_t>(const mxArray*, mxArray*&, std::string, std::int32_t,
                                                      const mxArray*, std::string);

// SPDX-License-Identifier: MIT
#include "entry/dispatch.hpp"

template void compute_attribute_profile<int>(const mxArray*, mxArray*&, std::string, std::int32_t, const mxArray*,
                                             std::string);

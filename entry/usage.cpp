// SPDX-License-Identifier: MIT
#include "entry/usage.hpp"

#include "entry/host.hpp"

namespace entry {

namespace {

// Each line is a printf format: no percent signs.
constexpr const char* usage[] = {
    " Attribute Profile - Sinopsys\n",
    "\n",
    "   AP = ATTRIBUTE_PROFILE(I, A, L)\n",
    "   AP = ATTRIBUTE_PROFILE(I, A, L, C)\n",
    "   AP = ATTRIBUTE_PROFILE(I, A, L, C, F)\n",
    "\n",
    " INPUT\n",
    ("     I:  2D input image. Data type supported: uint8, int8, uint16, int16, uint32, int32, uint64, "
     "int64.\n"),
    "     A:  Attribute type. String.\n",
    "         Attribute supported:\n",
    "             Area: 'a', 'area';\n",
    "             Length of the diagonal of the bounding box: 'd', 'diagonal';\n",
    "             Moment of inertia: 'i', 'inertia';\n",
    "             Standard deviation: 's', 'std'.\n",
    "     L:  Values of lambda. Array of double.\n",
    "     C:  Connectivity. Scalar. Either 4 (default) or 8.\n",
    "     F:  Filtering rule. String.\n",
    "         Rules supported:\n",
    "             Min: 'min' (default for attributes 'a', 'd');\n",
    "             Max: 'max';\n",
    "             Direct: 'direct';\n",
    "             Sub: 'sub' (default for attributes 'i', 's').\n",
    "\n",
    " OUTPUT\n",
    "     AP: Attribute Profile. Array of 2D images of the same data type of the input image.\n",
    "\n",
    "--\n",
    " Version 1.0\n",
    " 14 May 2010\n",
    " The attribute_profile authors\n",
    " attribute_profile@example.org\n",
};

}  // namespace

void print_usage() {
  for (const char* line : usage) mexPrintf(line);
}

}  // namespace entry

// SPDX-License-Identifier: MIT
#ifndef PYTHON_SRC_SETTINGS_HPP
#define PYTHON_SRC_SETTINGS_HPP

#include <string>
#include <vector>

namespace python {

/// What a profile is computed by, checked in Python already.
struct settings {
  std::string attribute;           ///< a name of `qel::morpho::named_attributes`
  std::vector<double> thresholds;  ///< not yet converted
  int connectivity;                ///< 4 or 8
  std::string rule;                ///< a name of `qel::morpho::tree::filter::rules`; empty for the attribute's default

  std::size_t planes() const { return 2 * thresholds.size() + 1; }
};

}  // namespace python

#endif  // PYTHON_SRC_SETTINGS_HPP

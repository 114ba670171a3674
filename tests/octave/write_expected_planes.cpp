// SPDX-License-Identifier: MIT

// write_expected_planes FILE: calls the module in the test host and writes images, thresholds and planes as a text
// file that Octave's `load` reads: image_CLASS, thresholds_ATTRIBUTE and planes_CLASS_ATTRIBUTE_CONNECTIVITY_RULE.

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

const std::vector<std::pair<std::string, std::vector<double>>> thresholds = {
    {"area", {2.9, 9, 4, -1}},
    {"diagonal", {5.5, 3, 1e9}},
    {"inertia", {0.16, 0.2, std::numeric_limits<double>::quiet_NaN()}},
    {"std", {0.5, 1.2, std::numeric_limits<double>::infinity()}}};

template <typename T>
void write(std::ostream& out, const std::string& name, const std::string& type, const mxArray* a) {
  const auto dimensions = test_host::dimensions(a);
  out << "# name: " << name << "\n# type: " << type << "\n# ndims: " << dimensions.size() << '\n';
  for (const std::size_t n : dimensions) out << ' ' << n;
  for (const T value : test_host::values<T>(a)) out << "\n " << +value;
  out << "\n\n\n";
}

template <typename T>
void write_class(std::ostream& out, support::random_engine& engine) {
  const std::string class_name = support::value_type_names::GetName<T>(0);
  const std::string type = class_name + " matrix";
  const auto image = support::random_image<T>(9, 13, support::flavour::few_levels, engine);
  mxArray* const input = test_host::matrix<T>(image.rows, image.cols, support::column_major(image));
  write<T>(out, "image_" + class_name, type, input);
  for (const auto& [attribute, values] : thresholds)
    for (const double connectivity : {4.0, 8.0})
      for (const std::string rule : {"min", "max", "direct", "sub"}) {
        const mxArray* const planes =
            test_host::call({input, test_host::text(attribute), test_host::matrix<double>(1, values.size(), values),
                             test_host::matrix<double>(1, 1, {connectivity}), test_host::text(rule)});
        std::ostringstream name;
        name << "planes_" << class_name << '_' << attribute << '_' << connectivity << '_' << rule;
        write<T>(out, name.str(), type, planes);
      }
  test_host::reset();
}

template <typename... T>
void write_classes(std::ostream& out, ::testing::Types<T...>) {
  support::random_engine engine(20100514);
  (write_class<T>(out, engine), ...);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: write_expected_planes FILE\n";
    return 2;
  }
  std::ofstream out(argv[1]);
  out.precision(std::numeric_limits<double>::max_digits10);
  for (const auto& [attribute, values] : thresholds)
    write<double>(out, "thresholds_" + attribute, "matrix", test_host::matrix<double>(1, values.size(), values));
  write_classes(out, support::value_types{});
  return out.flush() ? 0 : 1;
}

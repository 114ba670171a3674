// SPDX-License-Identifier: MIT

// fill_names TEMPLATE OUTPUT
//
// Writes OUTPUT: TEMPLATE with @attributes@ and @rules@ replaced by the names, as elements of a MATLAB cell array. They
// come from the lists that the module reads: a new name needs no second place.

#include <qel/core/image2d.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/tree/filter/rules.hpp>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <tuple>

namespace {

/// 'first', 'second', ...
template <typename List>
std::string quoted_names(const List& list) {
  std::string result;
  const auto append = [&](const std::string& name) { result += (result.empty() ? "'" : ", '") + name + "'"; };
  std::apply([&](const auto&... entries) { (append(entries.name), ...); }, list);
  return result;
}

void replace_all(std::string& text, const std::string& mark, const std::string& names) {
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += names.size())
    text.replace(at, mark.size(), names);
}

}  // namespace

int main(int argc, char* argv[]) {
  std::ifstream file(argc == 3 ? argv[1] : "");
  if (!file) {
    std::cerr << "usage: fill_names TEMPLATE OUTPUT\n";
    return EXIT_FAILURE;
  }
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  replace_all(text, "@attributes@", quoted_names(qel::morpho::named_attributes<qel::image2d<unsigned char>>));
  replace_all(text, "@rules@", quoted_names(qel::morpho::tree::filter::rules));
  std::ofstream output(argv[2], std::ios::binary);
  output << text << std::flush;
  return output ? EXIT_SUCCESS : EXIT_FAILURE;
}

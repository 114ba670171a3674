// SPDX-License-Identifier: MIT

// Prints the max-tree of a small image: its nodes, parents first, each with its parent, its children and its four
// attributes.

#include <iomanip>
#include <iostream>
#include <string>

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/opt_at.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/piter.hpp>

namespace {

namespace attribute = qel::morpho::attribute;

using image = qel::image2d<unsigned char>;
using tree_t = qel::morpho::tree::data<image, qel::p_array2d>;

constexpr short rows = 4;
constexpr short cols = 5;
constexpr unsigned char grey_levels[rows][cols] = {
    {1, 1, 1, 1, 1},  //
    {1, 5, 1, 3, 1},  //
    {1, 5, 2, 4, 1},  //
    {1, 1, 1, 1, 1},
};

image make_image() {
  image f(qel::box2d(qel::point2d(0, 0), qel::point2d(rows - 1, cols - 1)));
  for (short row = 0; row < rows; ++row)
    for (short col = 0; col < cols; ++col) qel::opt::at(f, row, col) = grey_levels[row][col];
  return f;
}

std::string name(const qel::point2d& p) { return "(" + std::to_string(p.row()) + "," + std::to_string(p.col()) + ")"; }

std::string names(const qel::p_array2d& sites) {
  std::string result;
  for (const qel::point2d& p : sites.vect_) result += (result.empty() ? "" : " ") + name(p);
  return result.empty() ? "-" : result;
}

void print(const tree_t& tree) {
  const auto area = compute_attribute_image(attribute::card<image>(), tree);
  const auto diagonal = compute_attribute_image(attribute::diagonal<image>(), tree);
  const auto inertia = compute_attribute_image(attribute::inertia<image>(), tree);
  const auto deviation = compute_attribute_image(attribute::deviation<image, float, float>(), tree);

  std::cout << "node   value  parent  area  diagonal  inertia  deviation  children\n"
            << std::fixed << std::setprecision(4);
  qel::morpho::tree::dn_node_piter<tree_t> n(tree);
  for (n.start(); n.is_valid(); n.next())
    std::cout << name(n) << std::setw(7) << int{tree.f()(n)} << "   " << name(tree.parent(n)) << std::setw(6) << area(n)
              << std::setw(10) << diagonal(n) << std::setw(9) << inertia(n) << std::setw(11) << deviation(n) << "  "
              << names(tree.children(n)) << '\n';
}

}  // namespace

int main() {
  const image f = make_image();
  const qel::p_array2d sites = qel::data::sort_psites_increasing(f);
  const tree_t tree(f, sites, qel::c4());
  std::cout << tree.nodes().nsites() << " nodes, " << tree.leaves().nsites()
            << " of them leaves: " << names(tree.leaves()) << "\n\n";
  print(tree);
  return 0;
}

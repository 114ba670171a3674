// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_SLOW_PROFILE_HPP
#define TESTS_SUPPORT_SLOW_PROFILE_HPP

// The attribute profile by its definition, as an oracle: threshold sets, their connected components found by flooding,
// rules that look at whole branches. Quadratic and worse; it shares no code with the library.
//
// Two things are the same bit for bit, because they decide results: the numeric types of the attributes and the order
// in which `float` sums are merged. Compile with -ffp-contract=off.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/random_image.hpp"

namespace oracle {

using support::matrix;
using site = std::size_t;  // row * cols + col
using sites = std::vector<site>;

// ---- Attributes

/// What the four attributes need of a set of sites. Coordinates are (row, column).
struct tally {
  std::uint32_t count;
  std::array<double, 2> first, last;  // bounding box, both ends inclusive
  std::array<float, 2> sum, squares;  // of the coordinates
  float value_sum, value_squares;
};

/// The tally of one site. The square of its value wraps in the type that the value promotes to.
template <typename T>
tally tally_of(const matrix<T>& image, site p) {
  using promoted = decltype(T{} * T{});
  using wrapping = std::make_unsigned_t<promoted>;
  const T value = image.values[p];
  const auto bits = static_cast<wrapping>(promoted{value});
  const site whole_rows = p / image.cols;
  const auto row = static_cast<float>(whole_rows);
  const auto col = static_cast<float>(p % image.cols);
  return {1,
          {row, col},
          {row, col},
          {row, col},
          {row * row, col * col},
          static_cast<float>(value),
          static_cast<float>(static_cast<promoted>(bits * bits))};
}

inline void merge(tally& whole, const tally& part) {
  whole.count += part.count;
  for (std::size_t axis = 0; axis < 2; ++axis) {
    whole.first[axis] = std::min(whole.first[axis], part.first[axis]);
    whole.last[axis] = std::max(whole.last[axis], part.last[axis]);
    whole.sum[axis] += part.sum[axis];
    whole.squares[axis] += part.squares[axis];
  }
  whole.value_sum += part.value_sum;
  whole.value_squares += part.value_squares;
}

inline double diagonal(const tally& t) {
  const double height = t.last[0] - t.first[0] + 1;
  const double width = t.last[1] - t.first[1] + 1;
  return std::sqrt(height * height + width * width);
}

inline float inertia(const tally& t) {
  const auto n = static_cast<float>(t.count);
  const float rows = t.squares[0] - t.sum[0] * t.sum[0] / n;
  const float cols = t.squares[1] - t.sum[1] * t.sum[1] / n;
  const double area = t.count;
  return static_cast<float>(static_cast<double>(rows + cols) / (area * area));
}

inline float deviation(const tally& t) {
  const auto n = static_cast<float>(t.count);
  const float mean = t.value_sum / n;
  return std::sqrt(t.value_squares / n - mean * mean);
}

/// The attribute whose name begins with `attribute`. A `double` holds every result type without loss, NaN included.
inline double measure(char attribute, const tally& t) {
  switch (attribute) {
    case 'a':
      return t.count;
    case 'd':
      return diagonal(t);
    case 'i':
      return static_cast<double>(inertia(t));
    default:
      return static_cast<double>(deviation(t));
  }
}

/// The threshold that attribute values are compared with: for areas the integer part modulo 2^32, and 0 for what no
/// 64-bit integer can hold; for inertia and deviation the nearest `float`.
inline double converted(char attribute, double threshold) {
  if (attribute == 'd') return threshold;
  if (attribute != 'a') return static_cast<double>(static_cast<float>(threshold));
  if (!(std::abs(threshold) < 0x1p63)) return 0;
  const double low = std::fmod(std::trunc(threshold), 0x1p32);
  return low < 0 ? low + 0x1p32 : low;
}

// ---- Component tree

/// A component of a threshold set {f >= v} or {f <= v} that has sites of value v.
struct node {
  site canonical;      // of its sites of value v, the first in the sweep order
  std::size_t parent;  // the next greater component, a node before this one; the root is its own parent
  tally content;       // of the whole component
};

template <typename T>
sites neighbours(const matrix<T>& image, site p, int connectivity) {
  const site row = p / image.cols;
  const site col = p % image.cols;
  sites result;
  for (site r = row == 0 ? 0 : row - 1; r < std::min(row + 2, image.rows); ++r)
    for (site c = col == 0 ? 0 : col - 1; c < std::min(col + 2, image.cols); ++c)
      if (connectivity == 8 ? r != row || c != col : (r == row) != (c == col)) result.push_back(r * image.cols + c);
  return result;
}

/// All sites, those of the root's value first. Ties are in raster order; but the falling order of a type wider than 8
/// bits mirrors the rising one.
template <typename T>
sites sweep_order(const matrix<T>& image, bool max_tree) {
  sites order(image.values.size());
  std::iota(order.begin(), order.end(), site{0});
  const bool falling_in_raster_order = !max_tree && sizeof(T) == 1;
  std::stable_sort(order.begin(), order.end(), [&](site p, site q) {
    return falling_in_raster_order ? image.values[p] > image.values[q] : image.values[p] < image.values[q];
  });
  if (!max_tree && !falling_in_raster_order) std::reverse(order.begin(), order.end());
  return order;
}

/// The max-tree or the min-tree of an image, and what its rules do.
template <typename T>
class tree {
 public:
  tree(const matrix<T>& image, bool max_tree, int connectivity)
      : image_(image), node_of_(image.values.size(), std::numeric_limits<std::size_t>::max()) {
    const sites order = sweep_order(image, max_tree);
    for (const site p : order)
      if (nodes_.empty() || value(node_of_[p]) != image.values[p]) add_node(p, max_tree, connectivity);
    sum_up(order);
  }

  const std::vector<node>& nodes() const { return nodes_; }

  /// The image filtered with one threshold. "direct" keeps the passing nodes, "max" them and all their ancestors,
  /// "min" those that pass with all their ancestors; the others get the value of the nearest kept ancestor, or of the
  /// root. "sub" keeps the step from the parent to each passing node, and wraps like T.
  matrix<T> filtered(char attribute, double threshold, const std::string& rule) const {
    std::vector<bool> kept;
    for (const node& n : nodes_) kept.push_back(measure(attribute, n.content) >= converted(attribute, threshold));
    for (std::size_t n = nodes_.size(); rule == "max" && n-- > 0;)
      if (kept[n]) kept[nodes_[n].parent] = true;
    std::vector<T> values = {value(0)};
    for (std::size_t n = 1; n < nodes_.size(); ++n) {
      const std::size_t parent = nodes_[n].parent;
      if (rule == "min" && !kept[parent]) kept[n] = false;
      const T raised = static_cast<T>(bits(values[parent]) + bits(value(n)) - bits(value(parent)));
      values.push_back(!kept[n] ? values[parent] : rule == "sub" ? raised : value(n));
    }
    matrix<T> result = image_;
    for (site p = 0; p < node_of_.size(); ++p) result.values[p] = values[node_of_[p]];
    return result;
  }

 private:
  T value(std::size_t n) const { return image_.values[nodes_[n].canonical]; }

  static std::uint64_t bits(T value) { return static_cast<std::uint64_t>(+value); }

  /// Levels come from the root outwards: what holds `first` so far is the parent, and each site of the component keeps
  /// the new node until a smaller component takes it.
  void add_node(site first, bool max_tree, int connectivity) {
    const std::size_t n = nodes_.size();
    const T level = image_.values[first];
    nodes_.push_back({first, n == 0 ? 0 : node_of_[first], {}});
    node_of_[first] = n;
    sites queue = {first};
    for (std::size_t i = 0; i < queue.size(); ++i)
      for (const site q : neighbours(image_, queue[i], connectivity)) {
        if (node_of_[q] == n || (max_tree ? image_.values[q] < level : image_.values[q] > level)) continue;
        node_of_[q] = n;
        queue.push_back(q);
      }
  }

  /// Every site takes itself. Then, the last of the order first, each hands over to the canonical site of its node, and
  /// a canonical site to that of the parent node. `float` sums round in this order.
  void sum_up(const sites& order) {
    std::vector<tally> tallies;
    for (site p = 0; p < order.size(); ++p) tallies.push_back(tally_of(image_, p));
    for (auto p = order.rbegin(); p != order.rend(); ++p) {
      const node& own = nodes_[node_of_[*p]];
      const site heir = *p == own.canonical ? nodes_[own.parent].canonical : own.canonical;
      if (heir != *p) merge(tallies[heir], tallies[*p]);
    }
    for (node& n : nodes_) n.content = tallies[n.canonical];
  }

  matrix<T> image_;
  std::vector<node> nodes_;
  std::vector<std::size_t> node_of_;  // by site: the last node whose component holds it
};

// ---- Profile

/// The profiles of one image under one connectivity, 4 or 8.
template <typename T>
class slow_profile {
 public:
  slow_profile(const matrix<T>& image, int connectivity)
      : image_(image), min_tree_(image, false, connectivity), max_tree_(image, true, connectivity) {}

  /// All 2N+1 planes one after the other, each column by column: the min-tree with the thresholds in reverse order, the
  /// image, the max-tree with the thresholds in order. An empty rule is the attribute's default.
  std::vector<T> planes(const std::string& attribute, const std::vector<double>& thresholds, std::string rule) const {
    const char a = attribute[0];
    if (rule.empty()) rule = a == 'a' || a == 'd' ? "min" : "sub";
    std::vector<T> result;
    const auto append = [&](const matrix<T>& plane) {
      const std::vector<T> block = column_major(plane);
      result.insert(result.end(), block.begin(), block.end());
    };
    for (auto t = thresholds.rbegin(); t != thresholds.rend(); ++t) append(min_tree_.filtered(a, *t, rule));
    append(image_);
    for (const double t : thresholds) append(max_tree_.filtered(a, t, rule));
    return result;
  }

  /// The attribute of every node of both trees: the values at which a threshold makes a difference.
  std::vector<double> attribute_values(const std::string& attribute) const {
    std::vector<double> result;
    for (const tree<T>* t : {&min_tree_, &max_tree_})
      for (const node& n : t->nodes()) result.push_back(measure(attribute[0], n.content));
    return result;
  }

 private:
  matrix<T> image_;
  tree<T> min_tree_, max_tree_;
};

}  // namespace oracle

#endif  // TESTS_SUPPORT_SLOW_PROFILE_HPP

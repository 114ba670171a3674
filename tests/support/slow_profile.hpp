// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_SLOW_PROFILE_HPP
#define TESTS_SUPPORT_SLOW_PROFILE_HPP

// The attribute profile by its definition, as an oracle for the real one: threshold sets, their connected
// components found by flooding, rules that look at whole branches. Quadratic and worse; it shares no code
// with the library.
//
// What is bit for bit the same as in the real one, because it decides results: the numeric types of the
// attributes and the order in which `float` sums are merged. Compile with -ffp-contract=off.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/random_image.hpp"

namespace oracle {

using support::matrix;
using site = std::size_t;  // row * cols + col
using sites = std::vector<site>;

// ---- Attributes

/// What the four attributes want to know of a set of sites. Coordinates are (row, column).
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

/// The attribute whose name begins with `attribute`. Every result type fits into a `double` without loss, NaN
/// included.
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

/// The threshold that attribute values are compared with: for areas the integer part modulo 2^32, and 0 for
/// what no 64-bit integer can hold; for inertia and deviation the nearest `float`.
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
  std::vector<bool> component;      // by site
  std::ptrdiff_t size;              // of the component, in sites
  std::size_t parent;               // index of the next greater component; the root is its own parent
  site canonical;                   // of the sites of value v, the first in the sweep order
  tally content;                    // of the whole component
  std::vector<std::size_t> branch;  // the node, its parent, and so on to the root
};

template <typename T>
sites neighbours(const matrix<T>& image, site p, int connectivity) {
  sites result;
  for (int dr = -1; dr <= 1; ++dr)
    for (int dc = -1; dc <= 1; ++dc) {
      const long row = static_cast<long>(p / image.cols) + dr;
      const long col = static_cast<long>(p % image.cols) + dc;
      const bool inside =
          0 <= row && row < static_cast<long>(image.rows) && 0 <= col && col < static_cast<long>(image.cols);
      const int steps = dr * dr + dc * dc;
      if (inside && (steps == 1 || (steps == 2 && connectivity == 8)))
        result.push_back(static_cast<site>(row) * image.cols + static_cast<site>(col));
    }
  return result;
}

/// The sites of `set` that can be reached from `start` without leaving it.
template <typename T>
std::vector<bool> flood(const matrix<T>& image, const std::vector<bool>& set, site start, int connectivity) {
  std::vector<bool> reached(set.size(), false);
  reached[start] = true;
  sites queue = {start};
  for (std::size_t i = 0; i < queue.size(); ++i)
    for (const site q : neighbours(image, queue[i], connectivity))
      if (set[q] && !reached[q]) {
        reached[q] = true;
        queue.push_back(q);
      }
  return reached;
}

/// All sites, the root's value first. Ties stand in raster order, except that the falling order of a type
/// wider than 8 bits mirrors the rising one.
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
  tree(const matrix<T>& image, bool max_tree, int connectivity) : image_(image), node_of_(image.values.size()) {
    for (const T v : std::set<T>(image.values.begin(), image.values.end())) add_level(v, max_tree, connectivity);
    for (std::size_t n = 0; n < nodes_.size(); ++n) nodes_[n].parent = next_greater(n);
    for (std::size_t n = 0; n < nodes_.size(); ++n) nodes_[n].branch = branch_of(n);
    sum_up(sweep_order(image, max_tree));
  }

  const std::vector<node>& nodes() const { return nodes_; }

  /// The image filtered with one threshold.
  matrix<T> filtered(char attribute, double threshold, const std::string& rule) const {
    std::vector<bool> passes;
    for (const node& n : nodes_) passes.push_back(measure(attribute, n.content) >= converted(attribute, threshold));
    const std::vector<bool> survives = survivors(passes, rule);
    std::vector<T> values;
    for (std::size_t n = 0; n < nodes_.size(); ++n)
      values.push_back(rule == "sub" ? lowered(n, passes) : value(nearest(n, survives)));
    matrix<T> result = image_;
    for (site p = 0; p < node_of_.size(); ++p) result.values[p] = values[node_of_[p]];
    return result;
  }

 private:
  T value(std::size_t n) const { return image_.values[nodes_[n].canonical]; }

  void add_level(T v, bool max_tree, int connectivity) {
    std::vector<bool> set;
    for (const T u : image_.values) set.push_back(max_tree ? u >= v : u <= v);
    std::vector<bool> done(set.size(), false);
    for (site p = 0; p < set.size(); ++p) {
      if (image_.values[p] != v || done[p]) continue;
      node n{flood(image_, set, p, connectivity), 0, 0, p, {}, {}};
      n.size = std::count(n.component.begin(), n.component.end(), true);
      for (site q = p; q < set.size(); ++q)
        if (n.component[q] && image_.values[q] == v) {
          node_of_[q] = nodes_.size();
          done[q] = true;
        }
      nodes_.push_back(n);
    }
  }

  /// Components are nested or apart: of those that hold a site of node `n` and are greater, the smallest.
  std::size_t next_greater(std::size_t n) const {
    std::size_t best = n;
    for (std::size_t m = 0; m < nodes_.size(); ++m)
      if (nodes_[m].component[nodes_[n].canonical] && nodes_[m].size > nodes_[n].size)
        if (best == n || nodes_[m].size < nodes_[best].size) best = m;
    return best;
  }

  /// Every site takes itself; then, the last of the order first, each hands over to the canonical site of its
  /// node, and a canonical site to that of the parent node. `float` sums round as this order says.
  void sum_up(const sites& order) {
    for (auto p = order.rbegin(); p != order.rend(); ++p) nodes_[node_of_[*p]].canonical = *p;
    std::vector<tally> tallies;
    for (site p = 0; p < order.size(); ++p) tallies.push_back(tally_of(image_, p));
    for (auto p = order.rbegin(); p != order.rend(); ++p) {
      const node& own = nodes_[node_of_[*p]];
      const site heir = *p == own.canonical ? nodes_[own.parent].canonical : own.canonical;
      if (heir != *p) merge(tallies[heir], tallies[*p]);
    }
    for (node& n : nodes_) n.content = tallies[n.canonical];
  }

  std::vector<std::size_t> branch_of(std::size_t n) const {
    std::vector<std::size_t> result = {n};
    while (nodes_[result.back()].parent != result.back()) result.push_back(nodes_[result.back()].parent);
    return result;
  }

  /// "direct": the passing nodes. "max": they and all their ancestors. "min": those that pass with all their ancestors.
  std::vector<bool> survivors(const std::vector<bool>& passes, const std::string& rule) const {
    const bool min = rule == "min";
    const bool max = rule == "max";
    std::vector<bool> result = passes;
    for (std::size_t n = 0; n < nodes_.size(); ++n)
      for (const std::size_t ancestor : nodes_[n].branch) {
        if (min && !passes[ancestor]) result[n] = false;
        if (max && passes[n]) result[ancestor] = true;
      }
    return result;
  }

  /// The nearest node upward that survives, or the root.
  std::size_t nearest(std::size_t n, const std::vector<bool>& survives) const {
    const auto& b = nodes_[n].branch;
    const auto found = std::find_if(b.begin(), b.end(), [&](std::size_t m) { return survives[m]; });
    return found == b.end() ? b.back() : *found;
  }

  std::uint64_t wrapping_value(std::size_t n) const { return static_cast<std::uint64_t>(+value(n)); }

  /// The node's value less the step to the parent at every failing node of its branch; wraps like T.
  T lowered(std::size_t n, const std::vector<bool>& passes) const {
    std::uint64_t result = wrapping_value(n);
    for (const std::size_t m : nodes_[n].branch)
      if (!passes[m]) result -= wrapping_value(m) - wrapping_value(nodes_[m].parent);
    return static_cast<T>(result);
  }

  matrix<T> image_;
  std::vector<node> nodes_;
  std::vector<std::size_t> node_of_;  // by site
};

// ---- Profile

/// The profiles of one image under one connectivity, 4 or 8.
template <typename T>
class slow_profile {
 public:
  slow_profile(const matrix<T>& image, int connectivity)
      : image_(image), min_tree_(image, false, connectivity), max_tree_(image, true, connectivity) {}

  /// All 2N+1 planes one after the other, each column by column: the min-tree with the thresholds in reverse
  /// order, the image, the max-tree with the thresholds in order. An empty rule is the attribute's default.
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

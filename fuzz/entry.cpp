// SPDX-License-Identifier: MIT

// Calls with any inputs: right ones end in a profile, wrong ones in an error, and nothing else is read or written.

#include "entry/messages.hpp"
#include "fuzz/input.hpp"
#include "tests/entry/test_host.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <numeric>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace messages = entry::messages;
using shape = std::vector<std::size_t>;
using texts = std::vector<std::string>;

constexpr std::size_t too_long = 32766;
const texts attributes = {"a", "area", "d", "diagonal", "i", "inertia", "s", "std"};
const texts rules = {"min", "max", "direct", "sub"};
const texts wrong_texts = {"A", "st", "stds", "Min", "%s%n", " sub"};

/// All but `not_two_dimensions`: another check finds such an image first.
const std::set<std::string> known_errors = {messages::wrong_count,          messages::bad_rule,
                                            messages::bad_connectivity,     messages::bad_image,
                                            messages::too_many_dimensions,  messages::bad_attribute,
                                            messages::empty_thresholds,     messages::unsupported_class,
                                            messages::unknown_connectivity, messages::unknown_attribute,
                                            messages::bad_thresholds,       messages::unknown_rule};

struct array_class {
  int id;
  std::size_t element_size;
};
constexpr array_class double_class = {6, 8};
constexpr array_class image_classes[] = {{8, 1}, {9, 1}, {10, 2}, {11, 2}, {12, 4}, {13, 4}, {14, 8}, {15, 8}};
constexpr array_class other_classes[] = {{1, 8}, {3, 1}, {4, 2}, double_class, {7, 4}};

// ---- Inputs

/// An input of the call, and a copy of its block from before.
struct argument {
  mxArray* array;
  std::vector<unsigned char> block;
  bool is_full;

  mxClassID id() const { return test_host::class_of(array); }
  shape dims() const { return test_host::dimensions(array); }
  std::size_t size() const { return mxGetNumberOfElements(array); }
  bool is_full_double() const { return is_full && id() == mxDOUBLE_CLASS; }
  bool is_text_of(const texts& known) const {
    return id() == test_host::char_class && std::count(known.begin(), known.end(), mxArrayToString(array)) == 1;
  }
};

/// The bits of any double, often a special one.
std::uint64_t number(fuzz::input& in) {
  using limits = std::numeric_limits<double>;
  constexpr double special[] = {
      4, 8, 0, 0.5, -1, 8.9, 1e10, 1e39, 1e300, -0x1p63, limits::infinity(), limits::quiet_NaN()};
  const std::size_t kind = in.below(4);
  if (kind == 0) return in.take<std::uint64_t>();
  const double d = kind == 1 ? static_cast<double>(in.below(64)) : in.pick(special);
  std::uint64_t bits = 0;
  std::memcpy(&bits, &d, sizeof bits);
  return bits;
}

/// An array whose elements repeat with a period of up to 64.
argument make_array(const array_class& c, const shape& dims, fuzz::input& in) {
  mxArray* const array = test_host::array(static_cast<mxClassID>(c.id), dims);
  std::vector<unsigned char> block(mxGetNumberOfElements(array) * c.element_size);
  const std::size_t period = (1 + in.below(64)) * c.element_size;
  for (std::size_t i = 0; i < std::min(period, block.size()); i += c.element_size) {
    const std::uint64_t bits = c.id == double_class.id ? number(in) : in.take<std::uint64_t>();
    std::memcpy(&block[i], &bits, c.element_size);
  }
  for (std::size_t i = period; i < block.size(); ++i) block[i] = block[i - period];
  if (!block.empty()) std::memcpy(mxGetPr(array), block.data(), block.size());
  return {array, block, true};
}

argument any_array(fuzz::input& in) {
  const array_class& c = in.below(4) == 0 ? in.pick(image_classes) : in.pick(other_classes);
  shape dims(2 + in.below(3));
  for (std::size_t& length : dims) length = in.below(5);
  argument result = make_array(c, dims, in);
  if ((c.id == mxDOUBLE_CLASS || c.id == mxLOGICAL_CLASS) && in.below(2) == 0) {
    const std::size_t nonzeros = in.below(result.size() + 1);
    test_host::set_sparse(result.array, nonzeros);
    result.block.resize(nonzeros * c.element_size);
    result.is_full = false;
  }
  return result;
}

argument any_image(fuzz::input& in) {
  const shape shapes[] = {{1, 300}, {300, 1}, {1, too_long}, {too_long, 1}};
  const array_class& c = in.pick(image_classes);
  if (in.below(16) == 15) return make_array(c, in.pick(shapes), in);
  const std::size_t rows = 1 + in.below(40);
  return make_array(c, {rows, 1 + in.below(40)}, in);
}

argument any_text(const texts& right, fuzz::input& in) {
  std::string s = in.pick(in.below(8) == 7 ? wrong_texts : right);
  if (in.below(16) == 15) s.append(in.below(600), 'x');
  argument result{test_host::text(s), {}, true};
  for (const char c : s) result.block.insert(result.block.end(), {static_cast<unsigned char>(c), 0});
  return result;
}

/// Input number `i`, mostly of the kind that the module wants there.
argument make_input(std::size_t i, fuzz::input& in) {
  if (in.below(8) == 7) return any_array(in);
  if (i == 0) return any_image(in);
  if (i == 1) return any_text(attributes, in);
  if (i == 2) return make_array(double_class, {1, 1 + in.below(5)}, in);
  if (i == 3) return make_array(double_class, {1, in.below(2)}, in);
  return any_text(rules, in);
}

bool is_connectivity(const argument& a) {
  if (!a.is_full_double() || a.size() != 1) return false;
  const double c = *mxGetPr(a.array);
  return (c > -1 && c < 1) || (c >= 4 && c < 5) || (c >= 8 && c < 9);
}

/// Whether the call has to succeed, by the help that users read. A text that begins with a zero is empty.
bool is_right_call(const std::vector<argument>& inputs) {
  const std::size_t n = inputs.size();
  if (n < 3 || n > 5) return n == 0;
  const shape image = inputs[0].dims();
  return inputs[0].id() >= mxINT8_CLASS && inputs[0].id() <= mxUINT64_CLASS && image.size() == 2 &&
         inputs[0].size() != 0 && std::max(image[0], image[1]) < too_long && inputs[1].is_text_of(attributes) &&
         inputs[2].is_full_double() && inputs[2].size() != 0 && inputs[2].dims()[0] == 1 &&
         (n < 4 || inputs[3].size() == 0 || is_connectivity(inputs[3])) &&
         (n < 5 || inputs[4].size() == 0 || inputs[4].is_text_of(rules) || inputs[4].is_text_of({""}));
}

// ---- Outcome

struct outcome {
  const mxArray* result = nullptr;
  std::string error, console;
};

outcome call(const std::vector<argument>& inputs) {
  outcome o;
  std::vector<const mxArray*> arrays(inputs.size());
  std::transform(inputs.begin(), inputs.end(), arrays.begin(), [](const argument& a) { return a.array; });
  try {
    o.result = test_host::call(arrays);
  } catch (const test_host::error& e) {
    o.error = e.what();
    fuzz::require(known_errors.count(o.error) == 1, "errors have one of the known texts");
  } catch (const std::bad_alloc&) {
    o.error = "no memory";
  }
  o.console = std::exchange(test_host::console(), {});
  return o;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::input in(data, size);
  test_host::reset();
  const std::size_t count = in.pick(std::vector<std::size_t>{3, 4, 5, 5, 5, 5, 5, 5, 3, 4, 5, 5, 0, 1, 2, 6});
  std::vector<argument> inputs;
  while (inputs.size() < count) inputs.push_back(make_input(inputs.size(), in));
  const bool no_text_memory = count != 0 && in.below(64) == 63;
  const bool right = is_right_call(inputs) && !no_text_memory;
  if (no_text_memory) test_host::exhaust_text_memory();

  const outcome first = call(inputs);
  const outcome second = call(inputs);
  fuzz::require(first.error.empty() == right, "right calls alone end without error");
  fuzz::require((first.result != nullptr) == (right && count != 0), "a right call with inputs has a result");
  fuzz::require(first.error == second.error && first.console == second.console, "a call repeated ends in the same way");
  for (const argument& a : inputs)
    fuzz::require(a.block.empty() || std::memcmp(a.block.data(), mxGetPr(a.array), a.block.size()) == 0, "inputs stay");
  if (first.result == nullptr) return 0;

  const shape image = inputs[0].dims();
  const std::size_t n = inputs[2].size();
  fuzz::require(test_host::class_of(first.result) == inputs[0].id(), "the result has the class of the image");
  fuzz::require(test_host::dimensions(first.result) == shape{image[0], image[1], 2 * n + 1},
                "dimensions of the result");
  const std::size_t bytes = (2 * n + 1) * inputs[0].block.size();
  fuzz::require(std::memcmp(mxGetPr(first.result), mxGetPr(second.result), bytes) == 0,
                "a call repeated has the same result");
  return 0;
}

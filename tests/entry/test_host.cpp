// SPDX-License-Identifier: MIT
#include "tests/entry/test_host.hpp"

#include "entry/attribute_profile.hpp"
#include "entry/sparse.hpp"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

struct free_block {
  void operator()(void* block) const { std::free(block); }
};

struct mxArray {
  mxClassID id;
  std::vector<std::size_t> dims;
  bool sparse;
  std::size_t bytes;
  std::unique_ptr<void, free_block> block;
};

namespace {

std::vector<std::unique_ptr<mxArray>> arrays;
std::vector<std::unique_ptr<char[]>> texts;
std::string printed;
bool text_memory_exhausted = false;

std::size_t element_size(mxClassID id) {
  constexpr std::size_t sizes[] = {0, 8, 8, 1, 2, 8, 8, 4, 1, 1, 2, 2, 4, 4, 8, 8};
  return sizes[static_cast<std::size_t>(id)];
}

std::size_t product(const std::vector<std::size_t>& factors, std::size_t first) {
  std::size_t result = 1;
  for (std::size_t i = first; i < factors.size(); ++i) result *= factors[i];
  return result;
}

mxArray* new_array(mxClassID id, std::vector<std::size_t> dims, int pattern) {
  const std::size_t bytes = product(dims, 0) * element_size(id);
  std::unique_ptr<void, free_block> block(std::malloc(bytes));
  if (!block && bytes > 0) throw std::bad_alloc();
  if (block) std::memset(block.get(), pattern, bytes);
  arrays.push_back(std::make_unique<mxArray>(mxArray{id, std::move(dims), false, bytes, std::move(block)}));
  return arrays.back().get();
}

}  // namespace

namespace test_host {

mxArray* array(mxClassID id, std::vector<std::size_t> dims) { return new_array(id, std::move(dims), 0); }

mxArray* text(const std::string& s) {
  mxArray* const a = array(char_class, {s.empty() ? 0u : 1u, s.size()});
  auto* const characters = static_cast<char16_t*>(a->block.get());
  for (std::size_t i = 0; i < s.size(); ++i) characters[i] = static_cast<unsigned char>(s[i]);
  return a;
}

void set_sparse(mxArray* a, std::size_t nonzeros) {
  const std::size_t bytes = nonzeros * element_size(a->id);
  std::unique_ptr<void, free_block> block(std::malloc(bytes));
  std::memcpy(block.get(), a->block.get(), std::min(bytes, a->bytes));
  a->block = std::move(block);
  a->bytes = bytes;
  a->sparse = true;
}

void exhaust_text_memory() { text_memory_exhausted = true; }

const mxArray* call(const std::vector<const mxArray*>& args, mxArray** plhs) {
  mxArray* own_slot = nullptr;
  mxArray** const slot = plhs ? plhs : &own_slot;
  std::vector<const mxArray*> prhs = args;
  mexFunction(1, slot, static_cast<int>(prhs.size()), prhs.data());
  return *slot;
}

std::vector<std::size_t> dimensions(const mxArray* a) { return a->dims; }

mxClassID class_of(const mxArray* a) { return a->id; }

std::string& console() { return printed; }

void reset() {
  arrays.clear();
  texts.clear();
  printed.clear();
  text_memory_exhausted = false;
}

namespace internal {

void* data(mxArray* a, std::size_t bytes) {
  if (bytes != a->bytes) throw std::invalid_argument("test_host: the values do not fill the array");
  return a->block.get();
}

const void* data(const mxArray* a, std::size_t element_size, std::size_t& count) {
  if (element_size != ::element_size(a->id)) throw std::invalid_argument("test_host: wrong element type");
  count = a->bytes / element_size;
  return a->block.get();
}

}  // namespace internal

}  // namespace test_host

void mexErrMsgTxt(const char* text) { throw test_host::error(text); }

int mexPrintf(const char* format, ...) {
  char line[512];
  std::va_list arguments;
  va_start(arguments, format);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): clang 14 does not see va_start of this platform
  const int length = std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  printed += line;
  return length;
}

char* mxArrayToString(const mxArray* array) {
  if (text_memory_exhausted) return nullptr;
  const std::size_t length = mxGetNumberOfElements(array);
  const auto* const characters = static_cast<const char16_t*>(array->block.get());
  texts.push_back(std::make_unique<char[]>(length + 1));
  for (std::size_t i = 0; i < length; ++i) texts.back()[i] = static_cast<char>(characters[i]);
  return texts.back().get();
}

mxArray* mxCreateNumericArray_700(std::int32_t dimension_count, const std::int32_t* dimensions, mxClassID class_id,
                                  std::int32_t complexity) {
  if (complexity != 0) throw std::invalid_argument("test_host: complex output");
  std::vector<std::size_t> dims(static_cast<std::size_t>(dimension_count));
  std::transform(dimensions, dimensions + dimension_count, dims.begin(),
                 [](std::int32_t length) { return static_cast<std::uint32_t>(length); });
  return new_array(class_id, std::move(dims), test_host::unwritten);
}

mxClassID mxGetClassID(const mxArray* array) { return array->id; }

std::size_t mxGetM(const mxArray* array) { return array->dims[0]; }

std::size_t mxGetN(const mxArray* array) { return product(array->dims, 1); }

std::int32_t mxGetNumberOfDimensions_700(const mxArray* array) { return static_cast<std::int32_t>(array->dims.size()); }

std::size_t mxGetNumberOfElements(const mxArray* array) { return product(array->dims, 0); }

double* mxGetPr(const mxArray* array) { return static_cast<double*>(array->block.get()); }

bool mxIsChar(const mxArray* array) { return array->id == test_host::char_class; }

bool mxIsDouble(const mxArray* array) { return array->id == mxDOUBLE_CLASS; }

bool mxIsEmpty(const mxArray* array) { return mxGetNumberOfElements(array) == 0; }

bool mxIsLogical(const mxArray* array) { return array->id == mxLOGICAL_CLASS; }

bool mxIsNumeric(const mxArray* array) { return array->id >= mxDOUBLE_CLASS && array->id <= mxUINT64_CLASS; }

bool mxIsSparse(const mxArray* array) { return array->sparse; }

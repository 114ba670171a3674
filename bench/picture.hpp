// SPDX-License-Identifier: MIT
#ifndef BENCH_PICTURE_HPP
#define BENCH_PICTURE_HPP

#include "bench/measure.hpp"
#include "entry/host.hpp"
#include "tests/entry/test_host.hpp"

#include <cstddef>
#include <cstring>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

/// A picture as bench/pictures.py writes it: rows x cols pixels of the class `id`, column by column.
struct picture {
  mxClassID id;
  std::size_t rows;
  std::size_t cols;
  std::vector<char> block;

  std::size_t sites() const { return rows * cols; }

  /// A new array of the test host with these pixels.
  mxArray* to_array() const {
    mxArray* const array = test_host::array(id, {rows, cols});
    std::memcpy(mxGetPr(array), block.data(), block.size());
    return array;
  }
};

/// \throws std::runtime_error if the file cannot be read.
inline picture read_picture(const std::string& path) {
  static const std::map<std::string, mxClassID> classes = {
      {"uint8", mxUINT8_CLASS}, {"uint16", mxUINT16_CLASS}, {"int32", mxINT32_CLASS}};
  std::ifstream file(path, std::ios::binary);
  std::string name;
  picture result{};
  file >> name >> result.rows >> result.cols;
  file.ignore();
  if (!file || classes.count(name) == 0) throw std::runtime_error("no picture: " + path);
  result.id = classes.at(name);
  const std::size_t width = name == "uint8" ? 1 : name == "uint16" ? 2 : 4;
  result.block.resize(result.sites() * width);
  if (!file.read(result.block.data(), static_cast<std::streamsize>(result.block.size())))
    throw std::runtime_error("picture too short: " + path);
  return result;
}

/// The inputs of the call `r` on the picture `p`, as new arrays of the test host.
inline std::vector<const mxArray*> to_arguments(const request& r, const picture& p) {
  return {p.to_array(), test_host::text(r.attribute), test_host::matrix<double>(1, r.thresholds.size(), r.thresholds),
          test_host::matrix<double>(1, 1, {r.connectivity}), test_host::text(r.rule)};
}

}  // namespace bench

#endif  // BENCH_PICTURE_HPP

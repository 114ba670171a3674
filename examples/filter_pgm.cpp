// SPDX-License-Identifier: MIT

// Removes the small bright structures of a grey picture, by an area opening on its max-tree:
//
//     filter_pgm input.pgm output.pgm AREA
//
// Every connected bright structure of fewer than AREA pixels is cut down to the grey level around it. Input: PGM, plain
// (P2) or raw (P5), of 8 or 16 bits. Output: PGM of the same kind.

#include <cctype>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>
#include <system_error>

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/opt_at.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/propagate_representative.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

namespace {

/// The area opening of `f`: no bright structure of fewer than `area` pixels stays.
template <typename T>
qel::image2d<T> area_opening(const qel::image2d<T>& f, unsigned area) {
  using image = qel::image2d<T>;
  // 1. The max-tree: its nodes are the bright structures, each inside its parent.
  const qel::p_array2d sites = qel::data::sort_psites_increasing(f);
  const qel::morpho::tree::data<image, qel::p_array2d> tree(f, sites, qel::c4());
  // 2. The area of every node.
  const auto areas = compute_attribute_image(qel::morpho::attribute::card<image>(), tree);
  // 3. Nodes that are too small take the value of their parent; then all pixels that of their node.
  image result = duplicate(f);
  qel::morpho::tree::filter::min(tree, result, qel::pw::value_(areas) >= qel::pw::cst_(area));
  qel::morpho::tree::propagate_representative(tree, result);
  return result;
}

struct pgm_header {
  bool raw;         // binary samples (P5), not decimal numbers (P2)
  unsigned width;   // columns
  unsigned height;  // rows
  unsigned maxval;  // the greatest sample; above 255 a raw sample has two bytes, the high one first
};

/// The next decimal number, in [least, greatest]; comments run from '#' to the end of the line.
unsigned read_number(std::istream& in, unsigned least, unsigned greatest, const char* what) {
  while ((in >> std::ws).peek() == '#') in.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  unsigned number = 0;
  if (!std::isdigit(in.peek()) || !(in >> number) || number < least || number > greatest)
    throw std::runtime_error(std::string("missing or bad ") + what);
  return number;
}

pgm_header read_header(std::istream& in) {
  char magic[2] = {};
  in.read(magic, 2);
  if (magic[0] != 'P' || (magic[1] != '2' && magic[1] != '5')) throw std::runtime_error("not a PGM file");
  constexpr unsigned largest = 32765;  // of the library: 16-bit coordinates, and a border of 3
  pgm_header h{};
  h.raw = magic[1] == '5';
  h.width = read_number(in, 1, largest, "width (1 to 32765)");
  h.height = read_number(in, 1, largest, "height (1 to 32765)");
  h.maxval = read_number(in, 1, 65535, "greatest value (1 to 65535)");
  if (h.raw) in.get();  // exactly one blank before the samples
  return h;
}

unsigned read_raw_sample(std::istream& in, const pgm_header& h) {
  unsigned sample = 0;
  for (unsigned bytes = h.maxval > 255 ? 2 : 1; bytes > 0; --bytes) {
    const int byte = in.get();
    if (byte == std::char_traits<char>::eof()) throw std::runtime_error("the file ends before the last sample");
    sample = sample << 8 | static_cast<unsigned>(byte);
  }
  if (sample > h.maxval) throw std::runtime_error("a sample exceeds the greatest value");
  return sample;
}

/// Calls `use(row, col)` for every pixel, row by row.
template <typename F>
void for_each_pixel(const pgm_header& h, F use) {
  for (unsigned row = 0; row < h.height; ++row)
    for (unsigned col = 0; col < h.width; ++col) use(static_cast<short>(row), static_cast<short>(col));
}

template <typename T>
qel::image2d<T> read_samples(std::istream& in, const pgm_header& h) {
  const qel::point2d last(static_cast<short>(h.height - 1), static_cast<short>(h.width - 1));
  qel::image2d<T> f(qel::box2d(qel::point2d(0, 0), last));
  for_each_pixel(h, [&](short row, short col) {
    const unsigned v = h.raw ? read_raw_sample(in, h) : read_number(in, 0, h.maxval, "sample");
    qel::opt::at(f, row, col) = static_cast<T>(v);
  });
  return f;
}

template <typename T>
void write_pgm(std::ostream& out, const pgm_header& h, const qel::image2d<T>& f) {
  out << (h.raw ? "P5\n" : "P2\n") << h.width << ' ' << h.height << '\n' << h.maxval << '\n';
  for_each_pixel(h, [&](short row, short col) {
    const unsigned v = qel::opt::at(f, row, col);
    if (!h.raw) {
      out << v << (static_cast<unsigned>(col) + 1 < h.width ? ' ' : '\n');
      return;
    }
    if (h.maxval > 255) out.put(static_cast<char>(v >> 8));
    out.put(static_cast<char>(v));
  });
}

template <typename T>
void filter(std::istream& in, const pgm_header& h, const char* output, unsigned area) {
  const qel::image2d<T> result = area_opening(read_samples<T>(in, h), area);
  std::ofstream out(output, std::ios::binary);
  write_pgm(out, h, result);
  if (!out.flush()) throw std::runtime_error(std::string("cannot write ") + output);
}

unsigned to_area(const char* text) {
  unsigned area = 0;
  const char* const end = text + std::strlen(text);
  const auto [stop, error] = std::from_chars(text, end, area);
  if (error != std::errc() || stop != end) throw std::runtime_error("AREA is not a number of pixels");
  return area;
}

void run(const char* input, const char* output, const char* area_text) {
  const unsigned area = to_area(area_text);
  std::ifstream in(input, std::ios::binary);
  if (!in) throw std::runtime_error(std::string("cannot read ") + input);
  const pgm_header h = read_header(in);
  if (h.maxval > 255)
    filter<unsigned short>(in, h, output, area);
  else
    filter<unsigned char>(in, h, output, area);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: filter_pgm input.pgm output.pgm AREA\n";
    return 2;
  }
  try {
    run(argv[1], argv[2], argv[3]);
  } catch (const std::exception& e) {
    std::cerr << "filter_pgm: " << e.what() << '\n';
    return 1;
  }
  return 0;
}

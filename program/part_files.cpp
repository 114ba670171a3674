// SPDX-License-Identifier: MIT
#include "program/part_files.hpp"

#include <cpl_conv.h>
#include <cpl_string.h>
#include <cpl_vsi.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <sstream>

#include "program/failure.hpp"

namespace program {
namespace {

GDALDatasetUniquePtr open_part(const std::string& path, gdal_errors& errors) {
  const gdal_errors::scope scope(errors);
  GDALDatasetUniquePtr dataset(
      GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR));
  if (!dataset) errors.fail("can't open " + path);
  return dataset;
}

std::vector<std::string> tif_files(const std::string& folder) {
  std::vector<std::string> files;
  const CPLStringList names(VSIReadDir(folder.c_str()));
  for (int k = 0; k < names.Count(); ++k)
    if (names[k][0] != '.' && EQUAL(CPLGetExtension(names[k]), "tif")) files.push_back(folder + "/" + names[k]);
  return files;
}

}  // namespace

part_files::part_files(const std::string& folder, const rectangle& region, gdal_errors& errors) {
  for (const std::string& path : tif_files(folder)) parts_.push_back(read_part(path, errors));
  if (parts_.empty()) throw failure(folder + " has no parts, that is, no .tif files");
  std::sort(parts_.begin(), parts_.end(), [](const part& a, const part& b) { return a.place.row < b.place.row; });
  for (const part& p : parts_) tallest_ = std::max(tallest_, p.place.rows);
  check_cover(region);
}

part_files::part part_files::read_part(const std::string& path, gdal_errors& errors) {
  const GDALDatasetUniquePtr dataset = open_part(path, errors);
  part p = {path, {}, {}, dataset->GetRasterCount()};
  const CPLStringList items(CSLDuplicate(dataset->GetMetadata()));
  for (int k = 0; k < items.Count(); ++k) {
    char* name = nullptr;
    const char* const value = CPLParseNameValue(items[k], &name);
    if (name != nullptr && value != nullptr) p.made_with.emplace_back(name, value);
    CPLFree(name);
  }
  std::istringstream place(value_of(p, place_key));
  if (!(place >> p.place.col >> p.place.row >> p.place.cols >> p.place.rows))
    throw failure(path + " does not say its place: no output of --srcwin");
  if (p.place.cols != dataset->GetRasterXSize() || p.place.rows != dataset->GetRasterYSize())
    throw failure(path + " has not the size that it says");
  return p;
}

const std::string& part_files::value_of(const part& p, const std::string& name) {
  static const std::string none;
  const auto found =
      std::find_if(p.made_with.begin(), p.made_with.end(), [&](const auto& item) { return item.first == name; });
  return found == p.made_with.end() ? none : found->second;
}

/// Parts that do not overlap, lie in the region and have as many pixels cover it.
void part_files::check_cover(const rectangle& region) const {
  std::map<std::int64_t, const part*> open;           // by column: parts that a row crosses
  std::multimap<std::int64_t, std::int64_t> columns;  // of the open parts, by the row in which they end
  for (const part& p : parts_) {
    if (!(intersection(p.place, region) == p.place)) throw failure(p.path + " is not within what is to be covered");
    for (auto ended = columns.begin(); ended != columns.end() && ended->first <= p.place.row;
         ended = columns.erase(ended))
      open.erase(ended->second);
    const auto next = open.lower_bound(p.place.col);
    if (next != open.end() && next->first < p.place.end_col())
      throw failure(p.path + " and " + next->second->path + " overlap");
    if (next != open.begin() && std::prev(next)->second->place.end_col() > p.place.col)
      throw failure(p.path + " and " + std::prev(next)->second->path + " overlap");
    open.emplace(p.place.col, &p);
    columns.emplace(p.place.end_row(), p.place.col);
  }
  const std::int64_t pixels = std::accumulate(parts_.begin(), parts_.end(), std::int64_t{0},
                                              [](std::int64_t sum, const part& p) { return sum + p.place.pixels(); });
  if (pixels != region.pixels())
    throw failure("parts are missing: " + std::to_string(parts_.size()) + " of them have " + std::to_string(pixels) +
                  " of " + std::to_string(region.pixels()) + " pixels");
}

std::string part_files::common(const std::string& name) const {
  const std::string& value = value_of(parts_.front(), name);
  check({{name, value}}, parts_.front().bands);
  return value;
}

void part_files::check(const settings& wanted, int bands) const {
  for (const part& p : parts_) {
    for (const auto& [name, value] : wanted)
      if (value_of(p, name) != value)
        throw failure(std::string(p.path).append(" is of another call: ").append(name).append(" is ") +
                      value_of(p, name) + ", not " + value);
    if (p.bands != bands)
      throw failure(p.path + " has " + std::to_string(p.bands) + " bands, not " + std::to_string(bands));
  }
}

void part_reader::refuse(const rectangle& place, const std::string& text) const {
  for (std::size_t k = first_at(place); k < files_.parts_.size(); ++k)
    if (!intersection(files_.parts_[k].place, {place.row, place.col, 1, 1}).empty())
      throw failure(files_.parts_[k].path + " " + text);
  throw failure("a part " + text);
}

/// The first that may reach so far down.
std::size_t part_reader::first_at(const rectangle& place) const {
  const auto found = std::lower_bound(files_.parts_.begin(), files_.parts_.end(), place.row - files_.tallest_ + 1,
                                      [](const auto& p, std::int64_t row) { return p.place.row < row; });
  return static_cast<std::size_t>(found - files_.parts_.begin());
}

GDALRasterBand& part_reader::open_band(std::size_t number, int band) {
  if (!open_ || number != number_) open_ = open_part(files_.parts_[number].path, errors_);
  number_ = number;
  if (band > open_->GetRasterCount()) refuse_type(number);
  return *open_->GetRasterBand(band);
}

void part_reader::read_block(std::size_t number, GDALRasterBand& band, const rectangle& place, GDALDataType type,
                             void* first, std::int64_t line_space) const {
  const gdal_errors::scope scope(errors_);
  const rectangle& origin = files_.parts_[number].place;
  const auto cols = static_cast<int>(place.cols);
  const auto rows = static_cast<int>(place.rows);
  const CPLErr result =
      band.RasterIO(GF_Read, static_cast<int>(place.col - origin.col), static_cast<int>(place.row - origin.row), cols,
                    rows, first, cols, rows, type, 0, line_space, nullptr);
  const std::string what = "can't read " + files_.parts_[number].path;
  if (result != CE_None) errors_.fail(what);
  errors_.check(what);
}

void part_reader::refuse_type(std::size_t number) const {
  throw failure(files_.parts_[number].path + " has bands of another type than the input");
}

}  // namespace program

// SPDX-License-Identifier: MIT
#include "program/scene_file.hpp"

#include <cpl_string.h>

#include <array>

#include "program/failure.hpp"

namespace program {
namespace {

[[noreturn]] void refuse_type(const std::string& path, GDALRasterBand& band) {
  const std::string number = std::to_string(band.GetBand());
  // The command keeps as much as 16 bits can of what the band holds.
  std::array<double, 2> ends;
  std::string scale = " -scale";
  if (GDALComputeRasterMinMax(&band, 1, ends.data()) == CE_None)
    scale += CPLSPrintf(" %.17g %.17g 0 65535", ends[0], ends[1]);
  throw failure("band " + number + " of " + path + " has values of type " +
                GDALGetDataTypeName(band.GetRasterDataType()) +
                ", not integers; make integers of it first: gdal_translate -b " + number + " -ot UInt16" + scale +
                " '" + path + "' integers.tif");
}

}  // namespace

scene_file::scene_file(const std::string& path, gdal_errors& errors) : path_(path), errors_(errors) {
  const gdal_errors::scope scope(errors_);
  dataset_.reset(GDALDataset::Open(path.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR));
  if (!dataset_) errors_.fail("can't open " + path);
  if (dataset_->GetRasterCount() == 0) throw failure(path + " has no raster bands; gdalinfo lists its subdatasets");
}

GDALRasterBand& scene_file::band(int number) const {
  const int count = dataset_->GetRasterCount();
  if (number < 1 || number > count)
    throw failure(path_ + " has no band " + std::to_string(number) + "; it has " + std::to_string(count));
  return *dataset_->GetRasterBand(number);
}

std::vector<int> scene_file::usable_bands(std::vector<int> wanted) const {
  if (wanted.empty())
    for (int number = 1; number <= dataset_->GetRasterCount(); ++number)
      if (band(number).GetColorInterpretation() != GCI_AlphaBand) wanted.push_back(number);
  if (wanted.empty()) throw failure(path_ + " has nothing but a band of transparency; ask for it with -b");
  for (const int number : wanted) {
    GDALRasterBand& b = band(number);
    if (!with_pixel_type(b, [](auto) {})) refuse_type(path_, b);
    bool like_first = true;
    with_pixel_type(band(wanted.front()),
                    [&](auto tag) { like_first = has_pixel_type<typename decltype(tag)::type>(b); });
    if (!like_first)
      throw failure("bands " + std::to_string(wanted.front()) + " and " + std::to_string(number) + " of " + path_ +
                    " have values of different types; choose bands of one type with -b");
  }
  return wanted;
}

GDALRasterBand* scene_file::mask_of(GDALRasterBand& band) {
  const int flags = band.GetMaskFlags();
  return (flags & GMF_ALL_VALID) != 0 || flags == GMF_NODATA ? nullptr : band.GetMaskBand();
}

std::vector<unsigned char> scene_file::read_mask(GDALRasterBand& mask, const rectangle& place) const {
  std::vector<unsigned char> pixels(static_cast<std::size_t>(place.pixels()));
  read_block(mask, place, GDT_Byte, pixels.data(), 1, place.cols);
  return pixels;
}

void scene_file::read_block(GDALRasterBand& source, const rectangle& place, GDALDataType type, void* first,
                            std::int64_t pixel_space, std::int64_t line_space) const {
  const gdal_errors::scope scope(errors_);
  const CPLErr result =
      source.RasterIO(GF_Read, static_cast<int>(place.col), static_cast<int>(place.row), static_cast<int>(place.cols),
                      static_cast<int>(place.rows), first, static_cast<int>(place.cols), static_cast<int>(place.rows),
                      type, pixel_space, line_space, nullptr);
  if (result != CE_None) errors_.fail("can't read " + path_);
  errors_.check("can't read " + path_);
}

}  // namespace program

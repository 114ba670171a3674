// SPDX-License-Identifier: MIT
#ifndef PROGRAM_SCENE_FILE_HPP
#define PROGRAM_SCENE_FILE_HPP

#include <gdal_priv.h>
#include <qel/core/dpoint2d.hpp>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "program/gdal_errors.hpp"
#include "program/pixel_type.hpp"
#include "program/scene.hpp"

namespace program {

/// The nodata value of a band, if it has one that a pixel can have.
template <typename T>
std::optional<T> nodata_of(GDALRasterBand& band) {
  int has = 0;
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 5, 0)
  // A double does not hold every integer of 64 bits.
  if constexpr (std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint64_t>) {
    const T nodata = [&] {
      if constexpr (std::is_signed_v<T>)
        return band.GetNoDataValueAsInt64(&has);
      else
        return band.GetNoDataValueAsUInt64(&has);
    }();
    return has != 0 ? std::optional<T>(nodata) : std::nullopt;
  }
#endif
  const double nodata = band.GetNoDataValue(&has);
  const bool fits = has != 0 && nodata >= static_cast<double>(std::numeric_limits<T>::min()) &&
                    nodata <= static_cast<double>(std::numeric_limits<T>::max());
  if (!fits || static_cast<double>(static_cast<T>(nodata)) != nodata) return std::nullopt;
  return static_cast<T>(nodata);
}

/// The input: a raster file that GDAL opens.
class scene_file {
 public:
  /// \throws failure if GDAL can't open it or it has no bands.
  scene_file(const std::string& path, gdal_errors& errors);

  GDALDataset& dataset() const { return *dataset_; }
  const std::string& path() const { return path_; }
  rectangle extent() const { return {0, 0, dataset_->GetRasterYSize(), dataset_->GetRasterXSize()}; }

  /// \throws failure if there is no such band. Bands count from 1.
  GDALRasterBand& band(int number) const;

  /// `wanted`, or all bands but those of transparency if it is empty.
  ///
  /// \throws failure if one of them is missing, has no integers, or has others than the first: with the command that helps.
  std::vector<int> usable_bands(std::vector<int> wanted) const;

  /// The band whose zeros mark pixels without data; null if there is none. Not for nodata values.
  static GDALRasterBand* mask_of(GDALRasterBand& band);

  /// A part of a mask, row by row. \throws failure if it can't be read.
  std::vector<unsigned char> read_mask(GDALRasterBand& mask, const rectangle& place) const;

  /// A part of a band. \throws failure if it can't be read; std::bad_alloc.
  template <typename T>
  window<T> read(int number, const rectangle& place) const {
    GDALRasterBand& source = band(number);
    window<T> w(place);
    read_into(source, place, gdal_type_of<T>(), w.values);
    if (GDALRasterBand* const mask = mask_of(source)) {
      w.valid = qel::image2d<unsigned char>(w.values.domain());
      read_into(*mask, place, GDT_Byte, w.valid);
    }
    if (const auto nodata = nodata_of<T>(source)) mark_nodata(*nodata, w);
    return w;
  }

 private:
  template <typename T>
  void read_into(GDALRasterBand& source, const rectangle& place, GDALDataType type, qel::image2d<T>& image) const {
    read_block(source, place, type, &image(image.domain().pmin()), sizeof(T),
               static_cast<std::int64_t>(sizeof(T)) * image.delta_index(qel::dpoint2d(1, 0)));
  }

  void read_block(GDALRasterBand& source, const rectangle& place, GDALDataType type, void* first,
                  std::int64_t pixel_space, std::int64_t line_space) const;

  template <typename T>
  static void mark_nodata(const T& nodata, window<T>& w) {
    const bool masked = w.valid.is_valid();
    if (!masked) w.valid = qel::image2d<unsigned char>(w.values.domain());
    qel::box2d::fwd_piter p(w.values.domain());
    for (p.start(); p.is_valid(); p.next()) w.valid(p) = w.values(p) != nodata && (!masked || w.valid(p) != 0);
  }

  std::string path_;
  gdal_errors& errors_;
  GDALDatasetUniquePtr dataset_;
};

}  // namespace program

#endif  // PROGRAM_SCENE_FILE_HPP

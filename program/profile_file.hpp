// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PROFILE_FILE_HPP
#define PROGRAM_PROFILE_FILE_HPP

#include <gdal_priv.h>

#include <cstddef>
#include <string>
#include <vector>

#include "program/gdal_errors.hpp"
#include "program/scene.hpp"
#include "program/scene_file.hpp"

namespace program {

/// How the output is made.
struct output_format {
  std::string driver;                         ///< GDAL's short name, such as GTiff
  std::vector<std::string> creation_options;  ///< NAME=VALUE
};

/// The output: a raster file that is complete or not there.
///
/// It is written under another name in the same folder, and gets its own, replacing an older file, when all is written.
class profile_file {
 public:
  /// Creates the file.
  ///
  /// \param source   where projection and the like come from.
  /// \param part     the part of the source that the file shows: its extent.
  /// \param bands    the bands of the source in their order; the file has `planes` bands for each.
  /// \throws failure
  profile_file(const std::string& path, const output_format& format, const scene_file& source, const rectangle& part,
               const std::vector<int>& bands, int planes, gdal_errors& errors);
  profile_file(const profile_file&) = delete;
  profile_file& operator=(const profile_file&) = delete;
  /// Deletes what is not complete.
  ~profile_file();

  /// What a band is, for people; bands count from 1.
  void describe(int number, const std::string& text);
  /// What the file is.
  void set_metadata(const std::string& name, const std::string& value);

  /// Writes pixels, row by row, at `place` of the source.
  ///
  /// \throws failure
  template <typename T>
  void write(int number, const rectangle& place, const std::vector<T>& pixels) {
    write_block(*dataset_->GetRasterBand(number), place, gdal_type_of<T>(), pixels.data(), sizeof(T));
  }

  /// Writes the mask, if the source has one, and gives the file its name. \throws failure
  void finish();

 private:
  void copy_georeference();
  void copy_band(GDALRasterBand& from, GDALRasterBand& to);
  void copy_mask(GDALRasterBand& mask);
  void write_block(GDALRasterBand& band, const rectangle& place, GDALDataType type, const void* pixels,
                   std::size_t size);
  void convert();
  void discard();
  void move_into_place();

  std::string path_;
  std::string partial_;  ///< the file's name until it is complete
  std::string
      written_;  ///< what is written to: the same, or a GeoTIFF to be copied if the format can only be copied to
  output_format format_;
  const scene_file& source_;
  int mask_source_;  ///< the band of the source that has the mask
  rectangle part_;
  gdal_errors& errors_;
  GDALDatasetUniquePtr dataset_;
};

}  // namespace program

#endif  // PROGRAM_PROFILE_FILE_HPP

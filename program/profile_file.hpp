// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PROFILE_FILE_HPP
#define PROGRAM_PROFILE_FILE_HPP

#include <gdal_priv.h>

#include <cstdint>
#include <string>
#include <vector>

#include "program/gdal_errors.hpp"
#include "program/output_folder.hpp"
#include "program/scene.hpp"
#include "program/scene_file.hpp"

namespace program {

/// How the output is made.
struct output_format {
  std::string driver;                         ///< GDAL's short name, such as GTiff
  std::vector<std::string> creation_options;  ///< NAME=VALUE
  int jobs;                                   ///< threads that may compress
  bool has_values_of_source;                  ///< whether a value means in the planes what it means in the source
};

/// The output: a raster file that is complete or not there.
///
/// It is written in a folder beside its place, and moved there, replacing an older file, when all is written.
class profile_file {
 public:
  /// Creates the file.
  ///
  /// \param source   where projection and the like come from.
  /// \param part     the part of the source that the file shows: its extent.
  /// \param bands    the bands of the source in their order; the file has `planes` bands for each.
  /// \throws failure
  profile_file(const std::string& path, output_format format, const scene_file& source, const rectangle& part,
               const std::vector<int>& bands, int planes, gdal_errors& errors);

  /// Whether the file is stored in strips as wide as itself: blocks had better be so, too.
  bool has_strips() const;

  /// Whether a tile has all bands: writing some of them writes it again.
  bool is_interleaved_by_pixel() const;

  /// What a band is, for people; bands count from 1.
  void describe(int number, const std::string& text);
  /// What the file is. An empty value takes away what the source has under this name.
  void set_metadata(const std::string& name, const std::string& value);

  /// Writes planes into consecutive bands, row by row, at `place` of the source.
  ///
  /// The bytes of the file depend on the places and their order alone, if they are made of whole tiles.
  ///
  /// \throws failure
  template <typename T>
  void write(int first_band, const rectangle& place, const std::vector<std::vector<T>>& planes) {
    std::vector<const void*> pixels;
    pixels.reserve(planes.size());
    for (const std::vector<T>& plane : planes) pixels.push_back(plane.data());
    write_planes(first_band, place, gdal_type_of<T>(), pixels);
  }

  /// Writes the mask, if the source has one, and gives the file its name. \throws failure
  void finish();

 private:
  void create(const output_format& format, const std::string& path, GDALRasterBand& like, int bands);
  void copy_georeference();
  void copy_band(GDALRasterBand& from, GDALRasterBand& to);
  void copy_mask(GDALRasterBand& mask);
  void write_planes(int first_band, const rectangle& place, GDALDataType type, const std::vector<const void*>& planes);
  bool is_made_of_tiles(const rectangle& place) const;
  void write_tiles(int first_band, const rectangle& place, const std::vector<const void*>& planes);
  void write_tile(GDALRasterBand& band, const rectangle& tile, const rectangle& place, const void* pixels);
  void write_block(GDALRasterBand& band, const rectangle& place, GDALDataType type, const void* pixels);
  void convert();

  std::string path_;
  output_format format_;
  const scene_file& source_;
  int mask_source_;  ///< the band of the source that has the mask
  rectangle part_;
  gdal_errors& errors_;
  output_folder folder_;
  bool is_converted_ = false;  ///< whether the format can only be copied to, from a GeoTIFF
  std::vector<unsigned char> tile_;
  GDALDatasetUniquePtr dataset_;
};

}  // namespace program

#endif  // PROGRAM_PROFILE_FILE_HPP

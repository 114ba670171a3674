// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PART_FILES_HPP
#define PROGRAM_PART_FILES_HPP

// Finished parts of a profile: outputs of runs with --srcwin.

#include <gdal_priv.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "program/gdal_errors.hpp"
#include "program/pixel_type.hpp"
#include "program/scene.hpp"

namespace program {

/// Names and values of metadata.
using settings = std::vector<std::pair<std::string, std::string>>;

/// The name under which a part says its place, as --srcwin has it.
inline constexpr char place_key[] = "SRCWIN";

/// Parts that cover a rectangle of a scene, each pixel once.
class part_files {
 public:
  part_files() = default;

  /// Opens all parts: the `.tif` files of `folder`.
  ///
  /// \param region  what they have to cover.
  /// \throws failure
  part_files(const std::string& folder, const rectangle& region, gdal_errors& errors);

  bool empty() const { return parts_.empty(); }

  /// What all parts say under a name. \throws failure if they differ.
  std::string common(const std::string& name) const;

  /// \throws failure if a part has not been made with these settings, or has not so many bands.
  void check(const settings& wanted, int bands) const;

 private:
  friend class part_reader;
  struct part {
    std::string path;
    rectangle place;
    settings made_with;
    int bands;
  };

  static part read_part(const std::string& path, gdal_errors& errors);
  void check_cover(const rectangle& region) const;
  static const std::string& value_of(const part& p, const std::string& name);

  std::vector<part> parts_;  ///< in the order of their first rows
  std::int64_t tallest_ = 0;
};

/// Reads parts. It keeps one of them open.
class part_reader {
 public:
  part_reader(const part_files& files, gdal_errors& errors) : files_(files), errors_(errors) {}

  /// Some bands at a place of the scene, row by row each. \param first_band  counts from 1. \throws failure
  template <typename T>
  std::vector<std::vector<T>> read(int first_band, std::size_t bands, const rectangle& place) {
    std::vector<std::vector<T>> planes(bands, std::vector<T>(static_cast<std::size_t>(place.pixels())));
    for (std::size_t k = first_at(place); k < files_.parts_.size() && files_.parts_[k].place.row < place.end_row();
         ++k) {
      const rectangle common = intersection(files_.parts_[k].place, place);
      if (common.empty()) continue;
      const auto offset = static_cast<std::size_t>((common.row - place.row) * place.cols + (common.col - place.col));
      for (std::size_t b = 0; b < bands; ++b) {
        GDALRasterBand& band = open_band(k, first_band + static_cast<int>(b));
        if (!has_pixel_type<T>(band)) refuse_type(k);
        read_block(k, band, common, gdal_type_of<T>(), &planes[b][offset],
                   place.cols * static_cast<std::int64_t>(sizeof(T)));
      }
    }
    return planes;
  }

  /// Throws a failure that names the part at the first pixel of a place. \param text  what is wrong with it.
  [[noreturn]] void refuse(const rectangle& place, const std::string& text) const;

 private:
  std::size_t first_at(const rectangle& place) const;
  GDALRasterBand& open_band(std::size_t number, int band);
  void read_block(std::size_t number, GDALRasterBand& band, const rectangle& place, GDALDataType type, void* first,
                  std::int64_t line_space) const;
  [[noreturn]] void refuse_type(std::size_t number) const;

  const part_files& files_;
  gdal_errors& errors_;
  std::size_t number_ = 0;
  GDALDatasetUniquePtr open_;
};

}  // namespace program

#endif  // PROGRAM_PART_FILES_HPP

// SPDX-License-Identifier: MIT
#include "program/profile_file.hpp"

#include <cpl_conv.h>
#include <cpl_string.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "program/failure.hpp"
#include "program/output_driver.hpp"

namespace program {
namespace {

bool can(GDALDriver& driver, const char* capability) { return driver.GetMetadataItem(capability) != nullptr; }

/// What the user said, and for GeoTIFF what suits a profile where nothing was said: tiles, because blocks are written;
/// planes one after the other, or each tile would be written again for each plane; no three planes taken for red, green
/// and blue.
CPLStringList creation_options(const output_format& format, bool signed_bytes) {
  CPLStringList options;
  for (const std::string& option : format.creation_options) options.AddString(option.c_str());
  const auto add = [&](const char* name, const char* value) {
    if (options.FetchNameValue(name) == nullptr) options.SetNameValue(name, value);
  };
  if (signed_bytes) add(signed_byte_key, signed_byte_value);
  if (format.driver != "GTiff") return options;
  if (format.jobs > 1) add("NUM_THREADS", std::to_string(format.jobs).c_str());
  // Planes are flat: more effort than the least makes files an eighth smaller, and doubles the time of a fast profile.
  if (options.FetchNameValue("COMPRESS") == nullptr) add("ZLEVEL", "1");
  for (const auto& [name, value] : {std::pair{"TILED", "YES"},
                                    {"COMPRESS", "DEFLATE"},
                                    {"BIGTIFF", "IF_SAFER"},
                                    {"INTERLEAVE", "BAND"},
                                    {"PHOTOMETRIC", "MINISBLACK"}})
    add(name, value);
  return options;
}

bool has_signed_bytes(GDALRasterBand& band) {
  bool result = false;
  with_pixel_type(band, [&](auto tag) { result = needs_signed_byte_mark<typename decltype(tag)::type>(); });
  return result;
}

/// What is known of a band beside its values, and not of its values.
CPLStringList lasting_metadata_of(GDALRasterBand& band) {
  CPLStringList items;
  for (CSLConstList item = band.GetMetadata(); item != nullptr && *item != nullptr; ++item)
    if (!STARTS_WITH_CI(*item, "STATISTICS_")) items.AddString(*item);
  return items;
}

}  // namespace

profile_file::profile_file(const std::string& path, output_format format, const scene_file& source,
                           const rectangle& part, const std::vector<int>& bands, int planes, gdal_errors& errors)
    : path_(path),
      format_(std::move(format)),
      source_(source),
      mask_source_(bands.front()),
      part_(part),
      errors_(errors),
      folder_(path, source.dataset(), source.path()) {
  const std::string what = "can't create " + path_;
  GDALRasterBand& first = source_.band(bands.front());
  GDALDriver& driver = driver_named(format_.driver);
  const int count = planes * static_cast<int>(bands.size());
  if (can(driver, GDAL_DCAP_CREATE)) {
    create(format_, folder_.path(), first, count);
  } else if (can(driver, GDAL_DCAP_CREATECOPY)) {
    // Formats that can't be written in parts are copied from one that can. GDAL 3.6 reads with the threads that it wrote
    // with, and takes a profile's many bands for an error there: so it gets none.
    is_converted_ = true;
    create({"GTiff", {}, 1, format_.has_values_of_source}, folder_.scratch_path(), first, count);
  } else {
    throw failure(what + ": GDAL can't write the format " + format_.driver);
  }
  copy_georeference();
  for (std::size_t b = 0; b < bands.size(); ++b)
    for (int p = 1; p <= planes; ++p)
      copy_band(source_.band(bands[b]), *dataset_->GetRasterBand(static_cast<int>(b) * planes + p));
  errors_.check(what);
}

void profile_file::create(const output_format& format, const std::string& path, GDALRasterBand& like, int bands) {
  const CPLStringList options = creation_options(format, has_signed_bytes(like));
  dataset_.reset(driver_named(format.driver)
                     .Create(path.c_str(), static_cast<int>(part_.cols), static_cast<int>(part_.rows), bands,
                             like.GetRasterDataType(), options.List()));
  if (!dataset_) errors_.fail("can't create " + path_);
}

bool profile_file::has_strips() const {
  int cols = 0;
  int rows = 0;
  dataset_->GetRasterBand(1)->GetBlockSize(&cols, &rows);
  return cols >= part_.cols && rows < part_.rows;
}

void profile_file::copy_georeference() {
  GDALDataset& from = source_.dataset();
  dataset_->SetMetadata(from.GetMetadata());
  if (char** const xmp = from.GetMetadata("xml:XMP")) dataset_->SetMetadata(xmp, "xml:XMP");
  CPLStringList rpc(CSLDuplicate(from.GetMetadata("RPC")));
  const auto move_origin = [&](const char* name, std::int64_t by) {
    if (const char* const offset = rpc.FetchNameValue(name))
      rpc.SetNameValue(name, CPLSPrintf("%.17g", CPLAtof(offset) - static_cast<double>(by)));
  };
  move_origin("LINE_OFF", part_.row);
  move_origin("SAMP_OFF", part_.col);
  if (rpc.Count() > 0) dataset_->SetMetadata(rpc.List(), "RPC");

  const auto col = static_cast<double>(part_.col);
  const auto row = static_cast<double>(part_.row);
  if (const int count = from.GetGCPCount(); count > 0) {
    GDAL_GCP* const points = GDALDuplicateGCPs(count, from.GetGCPs());
    for (int k = 0; k < count; ++k) {
      points[k].dfGCPPixel -= col;
      points[k].dfGCPLine -= row;
    }
    dataset_->SetGCPs(count, points, from.GetGCPSpatialRef());
    GDALDeinitGCPs(count, points);
    CPLFree(points);
    return;
  }
  if (const OGRSpatialReference* const projection = from.GetSpatialRef()) dataset_->SetSpatialRef(projection);
  std::array<double, 6> t;
  if (from.GetGeoTransform(t.data()) != CE_None) return;
  t[0] += col * t[1] + row * t[2];
  t[3] += col * t[4] + row * t[5];
  dataset_->SetGeoTransform(t.data());
}

void profile_file::copy_band(GDALRasterBand& from, GDALRasterBand& to) {
  int has = 0;
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 5, 0)
  if (from.GetRasterDataType() == GDT_Int64) {
    const auto nodata = from.GetNoDataValueAsInt64(&has);
    if (has != 0) to.SetNoDataValueAsInt64(nodata);
  } else if (from.GetRasterDataType() == GDT_UInt64) {
    const auto nodata = from.GetNoDataValueAsUInt64(&has);
    if (has != 0) to.SetNoDataValueAsUInt64(nodata);
  } else
#endif
  {
    const double nodata = from.GetNoDataValue(&has);
    if (has != 0) to.SetNoDataValue(nodata);
  }
  // The profile of a band of transparency is not transparency, and a palette is no order of brightness.
  const GDALColorInterp meaning = from.GetColorInterpretation();
  {
    const CPLErrorHandlerPusher quiet(CPLQuietErrorHandler);  // some formats have no place for it
    to.SetColorInterpretation(meaning == GCI_AlphaBand || meaning == GCI_PaletteIndex ? GCI_Undefined : meaning);
  }
  const double offset = from.GetOffset(&has);
  if (has != 0) to.SetOffset(offset);
  const double scale = from.GetScale(&has);
  if (has != 0) to.SetScale(scale);
  if (const char* const unit = from.GetUnitType(); *unit != '\0') to.SetUnitType(unit);
  if (CPLStringList items = lasting_metadata_of(from); items.Count() > 0) to.SetMetadata(items.List());
  if (format_.has_values_of_source)
    if (char** const names = from.GetCategoryNames()) to.SetCategoryNames(names);
}

bool profile_file::is_interleaved_by_pixel() const {
  const char* const interleave = dataset_->GetMetadataItem("INTERLEAVE", "IMAGE_STRUCTURE");
  return interleave != nullptr && std::string(interleave) == "PIXEL";
}

void profile_file::describe(int number, const std::string& text) {
  dataset_->GetRasterBand(number)->SetDescription(text.c_str());
}

void profile_file::set_metadata(const std::string& name, const std::string& value) {
  dataset_->SetMetadataItem(name.c_str(), value.empty() ? nullptr : value.c_str());
}

void profile_file::write_planes(int first_band, const rectangle& place, GDALDataType type,
                                const std::vector<const void*>& planes) {
  const gdal_errors::scope scope(errors_);
  if (is_made_of_tiles(place)) return write_tiles(first_band, place, planes);
  for (std::size_t k = 0; k < planes.size(); ++k)
    write_block(*dataset_->GetRasterBand(first_band + static_cast<int>(k)), place, type, planes[k]);
  // Later it would be written when other threads need the cache: in another order each time.
  for (std::size_t k = 0; k < planes.size(); ++k)
    dataset_->GetRasterBand(first_band + static_cast<int>(k))->FlushCache(false);
  errors_.check("can't write " + path_);
}

bool profile_file::is_made_of_tiles(const rectangle& place) const {
  int cols = 0;
  int rows = 0;
  dataset_->GetRasterBand(1)->GetBlockSize(&cols, &rows);
  const auto whole = [](std::int64_t begin, std::int64_t end, std::int64_t size, std::int64_t tile) {
    return begin % tile == 0 && (end % tile == 0 || end == size);
  };
  return whole(place.row - part_.row, place.end_row() - part_.row, part_.rows, rows) &&
         whole(place.col - part_.col, place.end_col() - part_.col, part_.cols, cols);
}

/// Past GDAL's cache, whose order of writing depends on what else is in it.
void profile_file::write_tiles(int first_band, const rectangle& place, const std::vector<const void*>& planes) {
  int cols = 0;
  int rows = 0;
  dataset_->GetRasterBand(1)->GetBlockSize(&cols, &rows);
  std::vector<rectangle> tiles;
  for (std::int64_t row = place.row; row < place.end_row(); row += rows)
    for (std::int64_t col = place.col; col < place.end_col(); col += cols) tiles.push_back({row, col, rows, cols});
  const auto write = [&](const rectangle& tile, std::size_t plane) {
    write_tile(*dataset_->GetRasterBand(first_band + static_cast<int>(plane)), tile, place, planes[plane]);
  };
  if (is_interleaved_by_pixel()) {
    for (const rectangle& tile : tiles)
      for (std::size_t plane = 0; plane < planes.size(); ++plane) write(tile, plane);
  } else {
    for (std::size_t plane = 0; plane < planes.size(); ++plane)
      for (const rectangle& tile : tiles) write(tile, plane);
  }
}

void profile_file::write_tile(GDALRasterBand& band, const rectangle& tile, const rectangle& place, const void* pixels) {
  const auto size = static_cast<std::size_t>(GDALGetDataTypeSizeBytes(band.GetRasterDataType()));
  const rectangle filled = intersection(tile, place);
  tile_.assign(static_cast<std::size_t>(tile.pixels()) * size, 0);
  for (std::int64_t row = filled.row; row < filled.end_row(); ++row) {
    const std::int64_t from = (row - place.row) * place.cols + (filled.col - place.col);
    const std::int64_t to = (row - tile.row) * tile.cols;
    std::memcpy(&tile_[static_cast<std::size_t>(to) * size],
                static_cast<const unsigned char*>(pixels) + static_cast<std::size_t>(from) * size,
                static_cast<std::size_t>(filled.cols) * size);
  }
  const auto col = static_cast<int>((tile.col - part_.col) / tile.cols);
  const auto row = static_cast<int>((tile.row - part_.row) / tile.rows);
  if (band.WriteBlock(col, row, tile_.data()) != CE_None) errors_.fail("can't write " + path_);
  errors_.check("can't write " + path_);
}

void profile_file::write_block(GDALRasterBand& band, const rectangle& place, GDALDataType type, const void* pixels) {
  // The call takes what it writes by a pointer to what may be read.
  void* const source = const_cast<void*>(pixels);
  const auto cols = static_cast<int>(place.cols);
  const auto rows = static_cast<int>(place.rows);
  const CPLErr result =
      band.RasterIO(GF_Write, static_cast<int>(place.col - part_.col), static_cast<int>(place.row - part_.row), cols,
                    rows, source, cols, rows, type, 0, 0, nullptr);
  if (result != CE_None) errors_.fail("can't write " + path_);
  errors_.check("can't write " + path_);
}

void profile_file::copy_mask(GDALRasterBand& mask) {
  dataset_->FlushCache(false);  // threads that compress write the mask, too, and would mix it with the last tiles
  CPLConfigOptionSetter inside("GDAL_TIFF_INTERNAL_MASK", "YES", false);
  if (dataset_->CreateMaskBand(GMF_PER_DATASET) != CE_None) errors_.fail("can't write the mask of " + path_);
  constexpr std::int64_t strip = 256;
  for (std::int64_t row = part_.row; row < part_.end_row(); row += strip) {
    const rectangle place = intersection({row, part_.col, strip, part_.cols}, part_);
    write_block(*dataset_->GetRasterBand(1)->GetMaskBand(), place, GDT_Byte, source_.read_mask(mask, place).data());
  }
}

void profile_file::finish() {
  if (GDALRasterBand* const mask = scene_file::mask_of(source_.band(mask_source_))) copy_mask(*mask);
  const std::string what = "can't write " + path_;
  dataset_->FlushCache(false);
  errors_.check(what);
  if (is_converted_) convert();
  dataset_.reset();
  errors_.check(what);
  folder_.commit();
}

void profile_file::convert() {
  const CPLStringList options = creation_options(format_, false);
  const GDALDatasetUniquePtr copy(
      driver_named(format_.driver)
          .CreateCopy(folder_.path().c_str(), dataset_.get(), 0, options.List(), nullptr, nullptr));
  if (!copy) errors_.fail("can't write " + path_);
}

}  // namespace program

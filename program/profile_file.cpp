// SPDX-License-Identifier: MIT
#include "program/profile_file.hpp"

#include <cpl_conv.h>
#include <cpl_string.h>
#include <cpl_vsi.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "program/failure.hpp"

namespace program {
namespace {

/// Files that belong to another one and would tell falsehoods about what replaces it: statistics, overviews, masks.
constexpr std::array<const char*, 3> sidecars = {".aux.xml", ".ovr", ".msk"};

bool exists(const std::string& path) {
  VSIStatBufL status;
  return VSIStatExL(path.c_str(), &status, VSI_STAT_EXISTS_FLAG) == 0;
}

bool is_folder(const std::string& path) {
  VSIStatBufL status;
  return VSIStatL(path.c_str(), &status) == 0 && VSI_ISDIR(status.st_mode) != 0;
}

/// Whether two paths lead to one file; false unless both exist.
bool is_same_file(const std::string& a, const std::string& b) {
  VSIStatBufL first;
  VSIStatBufL second;
  return VSIStatL(a.c_str(), &first) == 0 && VSIStatL(b.c_str(), &second) == 0 && first.st_ino != 0 &&
         first.st_ino == second.st_ino && first.st_dev == second.st_dev;
}

/// `path` under another name in the same folder; the extension stays, for some formats go by it. Two processes that
/// write the same file do not meet.
std::string partial_name(const std::string& path) {
  const std::string folder = CPLGetPath(path.c_str());
  const std::string stem = std::string(CPLGetBasename(path.c_str())) + ".partial-" + std::to_string(getpid());
  return CPLFormFilename(folder.empty() ? nullptr : folder.c_str(), stem.c_str(), CPLGetExtension(path.c_str()));
}

GDALDriver& driver_named(const std::string& name) {
  GDALDriver* const driver = GetGDALDriverManager()->GetDriverByName(name.c_str());
  if (driver == nullptr) throw failure("GDAL has no format " + name + "; gdalinfo --formats lists them");
  return *driver;
}

bool can(GDALDriver& driver, const char* capability) { return driver.GetMetadataItem(capability) != nullptr; }

/// What the user said, and for GeoTIFF what suits a profile where nothing was said: tiles, because blocks are written;
/// planes one after the other, or each tile would be written again for each plane; no three planes taken for red, green
/// and blue.
CPLStringList creation_options(const std::string& driver, const std::vector<std::string>& given, bool signed_bytes) {
  CPLStringList options;
  for (const std::string& option : given) options.AddString(option.c_str());
  const auto add = [&](const char* name, const char* value) {
    if (options.FetchNameValue(name) == nullptr) options.SetNameValue(name, value);
  };
  if (signed_bytes) add(signed_byte_key, signed_byte_value);
  if (driver != "GTiff") return options;
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

void delete_files(CSLConstList files, const std::string& prefix) {
  for (CSLConstList file = files; file != nullptr && *file != nullptr; ++file)
    if (std::string(*file).compare(0, prefix.size(), prefix) == 0) VSIUnlink(*file);
}

}  // namespace

profile_file::profile_file(const std::string& path, const output_format& format, const scene_file& source,
                           const rectangle& part, const std::vector<int>& bands, int planes, gdal_errors& errors)
    : path_(path),
      partial_(partial_name(path)),
      written_(partial_),
      format_(format),
      source_(source),
      mask_source_(bands.front()),
      part_(part),
      errors_(errors) {
  const std::string what = "can't create " + path_;
  if (is_folder(path_)) throw failure(what + ": it is a folder");
  if (is_same_file(path_, source.path())) throw failure(what + ": it is the input");
  GDALDriver* driver = &driver_named(format_.driver);
  std::vector<std::string> options = format_.creation_options;
  std::string name = format_.driver;
  if (!can(*driver, GDAL_DCAP_CREATE)) {
    if (!can(*driver, GDAL_DCAP_CREATECOPY)) throw failure(what + ": GDAL can't write the format " + name);
    // Formats that can't be written in parts are copied from one that can.
    written_ += ".tif";
    name = "GTiff";
    options.clear();
    driver = &driver_named(name);
  }
  GDALRasterBand& first = source_.band(bands.front());
  CPLStringList list = creation_options(name, options, has_signed_bytes(first));
  dataset_.reset(driver->Create(written_.c_str(), static_cast<int>(part.cols), static_cast<int>(part.rows),
                                planes * static_cast<int>(bands.size()), first.GetRasterDataType(), list.List()));
  if (!dataset_) errors_.fail(what);
  copy_georeference();
  for (std::size_t b = 0; b < bands.size(); ++b)
    for (int p = 1; p <= planes; ++p)
      copy_band(source_.band(bands[b]), *dataset_->GetRasterBand(static_cast<int>(b) * planes + p));
  errors_.check(what);
}

profile_file::~profile_file() { discard(); }

void profile_file::discard() {
  if (!dataset_) return;
  const CPLStringList files(dataset_->GetFileList());
  dataset_.reset();
  delete_files(files.List(), partial_);
  VSIUnlink(written_.c_str());  // in case it was too short to be listed
}

void profile_file::copy_georeference() {
  GDALDataset& from = source_.dataset();
  dataset_->SetMetadata(from.GetMetadata());
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
  to.SetColorInterpretation(meaning == GCI_AlphaBand || meaning == GCI_PaletteIndex ? GCI_Undefined : meaning);
  const double offset = from.GetOffset(&has);
  if (has != 0) to.SetOffset(offset);
  const double scale = from.GetScale(&has);
  if (has != 0) to.SetScale(scale);
  if (const char* const unit = from.GetUnitType(); *unit != '\0') to.SetUnitType(unit);
}

void profile_file::describe(int number, const std::string& text) {
  dataset_->GetRasterBand(number)->SetDescription(text.c_str());
}

void profile_file::set_metadata(const std::string& name, const std::string& value) {
  dataset_->SetMetadataItem(name.c_str(), value.c_str());
}

void profile_file::write_block(GDALRasterBand& band, const rectangle& place, GDALDataType type, const void* pixels,
                               std::size_t size) {
  // The call takes what it writes by a pointer to what may be read.
  void* const source = const_cast<void*>(pixels);
  const auto cols = static_cast<int>(place.cols);
  const auto rows = static_cast<int>(place.rows);
  const CPLErr result =
      band.RasterIO(GF_Write, static_cast<int>(place.col - part_.col), static_cast<int>(place.row - part_.row), cols,
                    rows, source, cols, rows, type, static_cast<GSpacing>(size), 0, nullptr);
  if (result != CE_None) errors_.fail("can't write " + path_);
  errors_.check("can't write " + path_);
}

void profile_file::copy_mask(GDALRasterBand& mask) {
  CPLConfigOptionSetter inside("GDAL_TIFF_INTERNAL_MASK", "YES", false);
  if (dataset_->CreateMaskBand(GMF_PER_DATASET) != CE_None) errors_.fail("can't write the mask of " + path_);
  constexpr std::int64_t strip = 256;
  for (std::int64_t row = part_.row; row < part_.end_row(); row += strip) {
    const rectangle place = intersection({row, part_.col, strip, part_.cols}, part_);
    write_block(*dataset_->GetRasterBand(1)->GetMaskBand(), place, GDT_Byte, source_.read_mask(mask, place).data(), 1);
  }
}

void profile_file::finish() {
  if (GDALRasterBand* const mask = scene_file::mask_of(source_.band(mask_source_))) copy_mask(*mask);
  const std::string what = "can't write " + path_;
  dataset_->FlushCache(false);
  errors_.check(what);
  if (written_ != partial_) convert();
  dataset_.reset();
  errors_.check(what);
  move_into_place();
}

void profile_file::convert() {
  CPLStringList options;
  for (const std::string& option : format_.creation_options) options.AddString(option.c_str());
  const GDALDatasetUniquePtr copy(
      driver_named(format_.driver).CreateCopy(partial_.c_str(), dataset_.get(), 0, options.List(), nullptr, nullptr));
  if (!copy) errors_.fail("can't write " + path_);
  discard();
}

void profile_file::move_into_place() {
  const std::string what = "can't move " + partial_ + " to " + path_;
  std::array<bool, sidecars.size()> has_sidecar;
  std::transform(sidecars.begin(), sidecars.end(), has_sidecar.begin(),
                 [&](const char* suffix) { return exists(partial_ + suffix); });
  if (driver_named(format_.driver).Rename(path_.c_str(), partial_.c_str()) != CE_None) errors_.fail(what);
  for (std::size_t k = 0; k < sidecars.size(); ++k)
    if (!has_sidecar[k]) VSIUnlink((path_ + sidecars[k]).c_str());
}

}  // namespace program

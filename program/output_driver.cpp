// SPDX-License-Identifier: MIT
#include "program/output_driver.hpp"

#include <cpl_conv.h>
#include <cpl_string.h>

#include "program/failure.hpp"

namespace program {
namespace {

bool has(GDALDriver& driver, const char* item) { return driver.GetMetadataItem(item) != nullptr; }

bool writes_rasters(GDALDriver& driver) {
  return has(driver, GDAL_DCAP_RASTER) && (has(driver, GDAL_DCAP_CREATE) || has(driver, GDAL_DCAP_CREATECOPY));
}

/// A virtual raster refers to pixels that are elsewhere, and here they would be nowhere.
bool holds_pixels(const std::string& name) { return name != "VRT"; }

bool has_extension(GDALDriver& driver, const std::string& extension) {
  const char* const list = driver.GetMetadataItem(GDAL_DMD_EXTENSIONS);
  const CPLStringList extensions(CSLTokenizeString(list != nullptr ? list : ""));
  return extensions.FindString(extension.c_str()) >= 0;
}

}  // namespace

GDALDriver& driver_named(const std::string& name) {
  GDALDriver* const driver = GetGDALDriverManager()->GetDriverByName(name.c_str());
  if (driver == nullptr) throw failure("GDAL has no format " + name + "; gdalinfo --formats lists them");
  if (!holds_pixels(driver->GetDescription())) throw failure("the format " + name + " has no pixels of its own");
  return *driver;
}

std::string format_of(const std::string& path) {
  const std::string extension = CPLGetExtension(path.c_str());
  if (extension.empty()) return "GTiff";
  GDALDriverManager& drivers = *GetGDALDriverManager();
  for (int k = 0; k < drivers.GetDriverCount(); ++k) {
    GDALDriver& driver = *drivers.GetDriver(k);
    if (writes_rasters(driver) && holds_pixels(driver.GetDescription()) && has_extension(driver, extension))
      return driver.GetDescription();
  }
  throw failure("no format has the extension of " + path + "; say the format by --of");
}

}  // namespace program

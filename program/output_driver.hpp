// SPDX-License-Identifier: MIT
#ifndef PROGRAM_OUTPUT_DRIVER_HPP
#define PROGRAM_OUTPUT_DRIVER_HPP

#include <gdal_priv.h>

#include <string>

namespace program {

/// The driver of a format by GDAL's short name. \throws failure if there is none.
GDALDriver& driver_named(const std::string& name);

/// GDAL's short name of the format that files like `path` have by their extension; GeoTIFF without an extension.
///
/// \throws failure if no format that can be written has the extension.
std::string format_of(const std::string& path);

}  // namespace program

#endif  // PROGRAM_OUTPUT_DRIVER_HPP

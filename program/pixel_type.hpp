// SPDX-License-Identifier: MIT
#ifndef PROGRAM_PIXEL_TYPE_HPP
#define PROGRAM_PIXEL_TYPE_HPP

// The eight integer types of bands, in GDAL's words and in those of C++.
//
// GDAL has signed bytes since 3.7. Before, they were bytes with a mark, PIXELTYPE=SIGNEDBYTE; their bits are read and
// written as bytes then. 64 bits it has since 3.5.

#include <gdal_priv.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace program {

/// A type for a type, to be handed to a function.
template <typename T>
struct type_tag {
  using type = T;
};

inline constexpr char signed_byte_key[] = "PIXELTYPE";
inline constexpr char signed_byte_value[] = "SIGNEDBYTE";

/// The type in which GDAL moves values of type T.
template <typename T>
constexpr GDALDataType gdal_type_of() {
  if (std::is_same_v<T, std::uint8_t>) return GDT_Byte;
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 7, 0)
  if (std::is_same_v<T, std::int8_t>) return GDT_Int8;
#else
  if (std::is_same_v<T, std::int8_t>) return GDT_Byte;
#endif
  if (std::is_same_v<T, std::uint16_t>) return GDT_UInt16;
  if (std::is_same_v<T, std::int16_t>) return GDT_Int16;
  if (std::is_same_v<T, std::uint32_t>) return GDT_UInt32;
  if (std::is_same_v<T, std::int32_t>) return GDT_Int32;
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 5, 0)
  if (std::is_same_v<T, std::uint64_t>) return GDT_UInt64;
  if (std::is_same_v<T, std::int64_t>) return GDT_Int64;
#endif
  return GDT_Unknown;
}

/// Whether GDAL needs the mark to know values of type T from those of another type.
template <typename T>
constexpr bool needs_signed_byte_mark() {
  return std::is_same_v<T, std::int8_t> && gdal_type_of<T>() == GDT_Byte;
}

/// Whether the values of `band` have the type T.
template <typename T>
bool has_pixel_type(GDALRasterBand& band) {
  if (band.GetRasterDataType() == GDT_Unknown || band.GetRasterDataType() != gdal_type_of<T>()) return false;
  const char* const mark = band.GetMetadataItem(signed_byte_key, "IMAGE_STRUCTURE");
  const bool marked = mark != nullptr && std::string(mark) == signed_byte_value;
  return gdal_type_of<T>() != GDT_Byte || marked == std::is_same_v<T, std::int8_t>;
}

/// Calls `use(type_tag<T>())` for the type of the values of `band`; returns false if it is none of the eight.
template <typename Use>
bool with_pixel_type(GDALRasterBand& band, Use use) {
  const auto used = [&](auto tag) {
    if (!has_pixel_type<typename decltype(tag)::type>(band)) return false;
    use(tag);
    return true;
  };
  return used(type_tag<std::uint8_t>()) || used(type_tag<std::int8_t>()) || used(type_tag<std::uint16_t>()) ||
         used(type_tag<std::int16_t>()) || used(type_tag<std::uint32_t>()) || used(type_tag<std::int32_t>()) ||
         used(type_tag<std::uint64_t>()) || used(type_tag<std::int64_t>());
}

}  // namespace program

#endif  // PROGRAM_PIXEL_TYPE_HPP

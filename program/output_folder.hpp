// SPDX-License-Identifier: MIT
#ifndef PROGRAM_OUTPUT_FOLDER_HPP
#define PROGRAM_OUTPUT_FOLDER_HPP

#include <gdal_priv.h>

#include <string>

namespace program {

/// Where the output is made: a folder beside it whose name begins with a dot, so that no `*.tif` finds what is not complete.
/// In it all files have the names they will have: formats with side-cars need nothing special.
///
/// The folder holds a locked file. A process that was killed leaves a folder without the lock, and the next one with the same
/// output removes it; two processes that make the same output do not meet.
class output_folder {
 public:
  /// Makes the folder. If `output` is a link, where it leads to counts.
  ///
  /// \param input  must not read what will be replaced.
  /// \throws failure if `output` is anything but a file or not there, or if `input` reads it.
  output_folder(const std::string& output, GDALDataset& input, const std::string& input_name);
  output_folder(const output_folder&) = delete;
  output_folder& operator=(const output_folder&) = delete;
  /// Deletes the folder and what is in it.
  ~output_folder();

  /// The name of the output in the folder.
  std::string path() const;

  /// A name for a file that is not to stay.
  std::string scratch_path() const { return folder_ + "/scratch.tif"; }

  /// Moves all into place, the output last, and deletes side-cars of an older output: they would tell falsehoods.
  ///
  /// \throws failure
  void commit();

 private:
  void make();
  void remove();

  std::string given_;   ///< as the user says it
  std::string output_;  ///< where it is
  std::string folder_;
  int lock_ = -1;
};

}  // namespace program

#endif  // PROGRAM_OUTPUT_FOLDER_HPP

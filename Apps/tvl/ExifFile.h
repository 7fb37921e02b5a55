// The Exif data of one image file: read, shown, patched.
#pragma once

#include "CExif.h"

#include <filesystem>
#include <memory>
#include <string>

/// What became of one file.
struct ExifFile {
    std::filesystem::path path;
    std::unique_ptr<CExif> exif = std::make_unique<CExif>();   // what could be read, also when there is an error
    std::string error;                                         // one line for the user; empty for a sound file
    bool isImage = true;                                       // of a format that can hold an Exif block
    bool hasBlock = false;
};

/// Reads the block of a file.
ExifFile ReadExifFile(const std::filesystem::path& path);
/// Sets the orientation (1 to 8) of a file that has one, in place: no byte changes but the tag's value, and in a PNG file
/// the chunk's check sum, without which readers drop the chunk.
ExifFile SetExifOrientation(const std::filesystem::path& path, int orientation);

/// The file's name in UTF-8, without characters that could move a terminal's cursor.
std::string ExifFileName(const std::filesystem::path& path);
/// The tags as lines of tag, label and value, below the file's name; long values are cut.
std::string ExifText(const ExifFile& file);
/// The file as one JSON object: "file", "tags" with "id", "type", "count", "label" where there is one, "text" as it is
/// shown and "value" (a string for text, hexadecimal digits for undefined bytes, else an array whose rationals are pairs),
/// and "error" where there is one.
std::string ExifJson(const ExifFile& file);

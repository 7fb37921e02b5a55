// tvl exif: shows the Exif data of image files, or sets their orientation.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

class ProgressBar;

struct ExifRequest {
    std::vector<std::filesystem::path> paths;   // files, and with `recursive` folders
    bool json = false;
    bool recursive = false;
    unsigned threads = 0;   // 0 for one per processor
    int orientation = 0;    // 1 to 8 to set it, 0 to show the tags
};

/// Does what is asked for, file by file in order.
/// @param out      receives the tags, or one JSON array of all files; nothing when an orientation is set
/// @param errors   receives one line for each bad file
/// @param bar      shows how many files are done
/// @return 0, or 2 when there was a bad file
int RunExif(const ExifRequest& request, std::ostream& out, std::ostream& errors, ProgressBar& bar);

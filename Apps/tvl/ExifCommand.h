// tvl exif: shows the Exif data of image files, or sets their orientation.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

class TaskView;
namespace TvlUtl {
class ITaskProgress;
}

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
/// @param task     told of each file; when it is cancelled, the files that have not been begun are left alone
/// @param view     pauses while something is written
/// @return 0, 2 when there was a bad file, 130 when the task was cancelled
int RunExif(
    const ExifRequest& request, std::ostream& out, std::ostream& errors, TvlUtl::ITaskProgress& task, TaskView& view);

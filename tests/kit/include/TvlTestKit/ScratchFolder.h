// Folders of a test's own.
#pragma once

#include <filesystem>
#include <string>

namespace TvlTestKit {

/// A new, empty folder among the system's temporary files. It ends with its object, with all that is in it.
class ScratchFolder {
public:
    /// Throws std::filesystem::filesystem_error when the folder can't be made.
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();
    /// The folder's full path.
    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Bytes of a file; empty when it can't be read.
std::string FileBytes(const std::filesystem::path& path);

/// Writes a file anew, with the folders on its way.
void WriteFileBytes(const std::filesystem::path& path, const std::string& bytes);

}   // namespace TvlTestKit

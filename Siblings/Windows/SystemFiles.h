// The system's own side of the file layer, where the targets differ.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"

namespace TvlUtils::SystemIO {

/// FileLayer::Open.
FileResult OpenSystemFile(const std::filesystem::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle);
/// FileLayer::CreateLike.
FileResult CreateSystemFileLike(
    const std::filesystem::path& path, const std::filesystem::path& model, std::unique_ptr<FileHandle>& handle);
/// FileLayer::MakeFolder.
FileResult MakeSystemFolder(const std::filesystem::path& path);
/// FileLayer::MakePrivateFolder.
FileResult MakePrivateSystemFolder(const std::filesystem::path& path);
/// FileLayer::Rename.
FileResult RenameSystemFile(const std::filesystem::path& from, const std::filesystem::path& to);
/// FileLayer::Remove.
FileResult RemoveSystemFile(const std::filesystem::path& path);
/// FileLayer::Stat, for a name without a separator behind it.
FileResult StatSystemFile(const std::filesystem::path& path, FileStatus& status);
/// FileLayer::List. Not by the standard library, which ends the process when an entry finds no memory.
FileResult ListSystemFolder(const std::filesystem::path& folder, std::vector<FolderEntry>& entries);
/// Ends the process without running or flushing anything.
[[noreturn]] void EndProcessAtOnce(int exitCode);

}   // namespace TvlUtils::SystemIO

// The system's files, of which one operation fails, or all from one on.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"

/// In the system's place as long as it lives.
class FailingFiles final : public TvlUtils::SystemIO::FileLayer {
public:
    using FileResult = TvlUtils::SystemIO::FileResult;
    using Path = std::filesystem::path;

    /// @param point the operation that fails, counted from 1
    FailingFiles(int point, bool isOnward);
    ~FailingFiles() override;
    FailingFiles(const FailingFiles&) = delete;
    FailingFiles& operator=(const FailingFiles&) = delete;

    FileResult Open(const Path& path, TvlUtils::SystemIO::OpenMode mode,
        std::unique_ptr<TvlUtils::SystemIO::FileHandle>& handle) override;
    FileResult Rename(const Path& from, const Path& to) override;
    FileResult Remove(const Path& path) override;
    FileResult List(const Path& folder, std::vector<TvlUtils::SystemIO::FolderEntry>& entries) override;
    FileResult Stat(const Path& path, TvlUtils::SystemIO::FileStatus& status) override;
    FileResult MakeFolder(const Path& path) override;
    FileResult SetReadOnly(const Path& path, bool readOnly) override;

    /// Counts one operation, which fails or not.
    FileResult Admit();

private:
    FileLayer& m_system;
    const int m_point;
    const bool m_isOnward;
    int m_count = 0;
};

// The system's files, of which one operation fails, or all from one on.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"

/// In the system's place as long as it lives.
class FailingFiles final : public TvlUtils::SystemIO::FileLayer {
public:
    using FileResult = TvlUtils::SystemIO::FileResult;
    using Path = std::filesystem::path;

    /// @param point the operation that fails, counted from 1; 0 for none, which only counts
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
    FileResult CreateLike(
        const Path& path, const Path& model, std::unique_ptr<TvlUtils::SystemIO::FileHandle>& handle) override;
    FileResult MakePrivateFolder(const Path& path) override;

    /// Counts one operation, which fails or not.
    FileResult Admit();
    /// Operations so far, in the order and number of those that kFileStopVariable counts.
    int Count() const { return m_count; }
    /// Whether one of them has failed for that it should.
    bool HasFailed() const { return m_point > 0 && m_count >= m_point; }

private:
    template <class Opening>
    FileResult AdmitOpening(Opening open, std::unique_ptr<TvlUtils::SystemIO::FileHandle>& handle);

    FileLayer& m_system;
    const int m_point;
    const bool m_isOnward;
    int m_count = 0;
};

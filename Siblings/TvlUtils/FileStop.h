// A file layer that ends the process in an operation of a given number, so that tests can see what a crash leaves.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"

#include <atomic>

namespace TvlUtils::SystemIO {

/// Passes everything on to another layer up to one operation; see kFileStopVariable.
class StoppingFileLayer final : public FileLayer {
public:
    StoppingFileLayer(FileLayer& layer, long long stopAt) : m_layer(layer), m_left(stopAt) { }

    FileResult Open(const std::filesystem::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle) override;
    FileResult Rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    FileResult Remove(const std::filesystem::path& path) override;
    FileResult List(const std::filesystem::path& folder, std::vector<FolderEntry>& entries) override;
    FileResult Stat(const std::filesystem::path& path, FileStatus& status) override;
    FileResult MakeFolder(const std::filesystem::path& path) override;
    FileResult SetReadOnly(const std::filesystem::path& path, bool readOnly) override;
    FileResult CreateLike(const std::filesystem::path& path, const std::filesystem::path& model,
        std::unique_ptr<FileHandle>& handle) override;
    FileResult MakePrivateFolder(const std::filesystem::path& path) override;

    /// Counts one operation; whether it is the one to stop in.
    bool IsLast() { return m_left.fetch_sub(1, std::memory_order_relaxed) == 1; }
    /// Counts one operation, and ends the process when it is the one.
    void Count();

private:
    template <class Opening>
    FileResult CountOpening(Opening open, std::unique_ptr<FileHandle>& handle);

    FileLayer& m_layer;
    std::atomic<long long> m_left;   // operations up to the stop
};

}   // namespace TvlUtils::SystemIO

#include "TvlUtils/FileStop.h"

#include "Windows/SystemFiles.h"

namespace TvlUtils::SystemIO {

namespace fs = std::filesystem;

namespace {
class StoppingFile final : public FileHandle {
public:
    StoppingFile(std::unique_ptr<FileHandle> file, StoppingFileLayer& layer) : m_file(std::move(file)), m_layer(layer)
    {
    }

    FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) override
    {
        m_layer.Count();
        return m_file->ReadAt(offset, bytes, size, done);
    }
    FileResult WriteAt(long long offset, const void* bytes, std::size_t size, std::size_t& done) override
    {
        if (!m_layer.IsLast())
            return m_file->WriteAt(offset, bytes, size, done);
        static_cast<void>(m_file->WriteAt(offset, bytes, size / 2, done));
        EndProcessAtOnce(kFileStopExitCode);
    }
    FileResult Flush() override
    {
        m_layer.Count();
        return m_file->Flush();
    }
    FileResult Close() override
    {
        m_layer.Count();
        return m_file->Close();
    }

private:
    std::unique_ptr<FileHandle> m_file;
    StoppingFileLayer& m_layer;
};
}   // namespace

void StoppingFileLayer::Count()
{
    if (IsLast())
        EndProcessAtOnce(kFileStopExitCode);
}

template <class Opening>
FileResult StoppingFileLayer::CountOpening(Opening open, std::unique_ptr<FileHandle>& handle)
{
    Count();
    std::unique_ptr<FileHandle> file;
    const FileResult result = open(file);
    if (result)
        handle = std::make_unique<StoppingFile>(std::move(file), *this);
    return result;
}

FileResult StoppingFileLayer::Open(const fs::path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle)
{
    return CountOpening([&](std::unique_ptr<FileHandle>& file) { return m_layer.Open(path, mode, file); }, handle);
}

FileResult StoppingFileLayer::CreateLike(
    const fs::path& path, const fs::path& model, std::unique_ptr<FileHandle>& handle)
{
    return CountOpening(
        [&](std::unique_ptr<FileHandle>& file) { return m_layer.CreateLike(path, model, file); }, handle);
}

FileResult StoppingFileLayer::Rename(const fs::path& from, const fs::path& to)
{
    Count();
    return m_layer.Rename(from, to);
}

FileResult StoppingFileLayer::Remove(const fs::path& path)
{
    Count();
    return m_layer.Remove(path);
}

FileResult StoppingFileLayer::List(const fs::path& folder, std::vector<FolderEntry>& entries)
{
    Count();
    return m_layer.List(folder, entries);
}

FileResult StoppingFileLayer::Stat(const fs::path& path, FileStatus& status)
{
    Count();
    return m_layer.Stat(path, status);
}

FileResult StoppingFileLayer::MakeFolder(const fs::path& path)
{
    Count();
    return m_layer.MakeFolder(path);
}

FileResult StoppingFileLayer::MakePrivateFolder(const fs::path& path)
{
    Count();
    return m_layer.MakePrivateFolder(path);
}

FileResult StoppingFileLayer::SetReadOnly(const fs::path& path, bool readOnly)
{
    Count();
    return m_layer.SetReadOnly(path, readOnly);
}

}   // namespace TvlUtils::SystemIO

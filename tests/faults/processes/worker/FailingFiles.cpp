#include "FailingFiles.h"

using namespace TvlUtils::SystemIO;

namespace {
class FailingFile final : public FileHandle {
public:
    FailingFile(std::unique_ptr<FileHandle> file, FailingFiles& files) : m_file(std::move(file)), m_files(files) { }

    FileResult ReadAt(long long offset, void* bytes, std::size_t size, std::size_t& done) override
    {
        done = 0;
        const FileResult result = m_files.Admit();
        return result ? m_file->ReadAt(offset, bytes, size, done) : result;
    }
    FileResult WriteAt(long long offset, const void* bytes, std::size_t size, std::size_t& done) override
    {
        done = 0;
        const FileResult result = m_files.Admit();
        return result ? m_file->WriteAt(offset, bytes, size, done) : result;
    }
    FileResult Flush() override
    {
        const FileResult result = m_files.Admit();
        return result ? m_file->Flush() : result;
    }
    FileResult Close() override
    {
        const FileResult result = m_files.Admit();
        const FileResult closed = m_file->Close();
        return result ? closed : result;
    }

private:
    std::unique_ptr<FileHandle> m_file;
    FailingFiles& m_files;
};
}   // namespace

FailingFiles::FailingFiles(int point, bool isOnward) : m_system(FileLayer::Get()), m_point(point), m_isOnward(isOnward)
{
    SetForTests(this);
}

FailingFiles::~FailingFiles() { SetForTests(nullptr); }

FileResult FailingFiles::Admit()
{
    ++m_count;
    const bool fails = m_isOnward ? HasFailed() : m_count == m_point;
    return fails ? FileResult(std::errc::io_error) : FileResult();
}

template <class Opening>
FileResult FailingFiles::AdmitOpening(Opening open, std::unique_ptr<FileHandle>& handle)
{
    FileResult result = Admit();
    std::unique_ptr<FileHandle> file;
    if (result)
        result = open(file);
    if (result)
        handle = std::make_unique<FailingFile>(std::move(file), *this);
    return result;
}

FileResult FailingFiles::Open(const Path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle)
{
    return AdmitOpening([&](std::unique_ptr<FileHandle>& file) { return m_system.Open(path, mode, file); }, handle);
}

FileResult FailingFiles::CreateLike(const Path& path, const Path& model, std::unique_ptr<FileHandle>& handle)
{
    return AdmitOpening(
        [&](std::unique_ptr<FileHandle>& file) { return m_system.CreateLike(path, model, file); }, handle);
}

FileResult FailingFiles::Rename(const Path& from, const Path& to)
{
    const FileResult result = Admit();
    return result ? m_system.Rename(from, to) : result;
}

FileResult FailingFiles::Remove(const Path& path)
{
    const FileResult result = Admit();
    return result ? m_system.Remove(path) : result;
}

FileResult FailingFiles::List(const Path& folder, std::vector<FolderEntry>& entries)
{
    entries.clear();
    const FileResult result = Admit();
    return result ? m_system.List(folder, entries) : result;
}

FileResult FailingFiles::Stat(const Path& path, FileStatus& status)
{
    const FileResult result = Admit();
    return result ? m_system.Stat(path, status) : result;
}

FileResult FailingFiles::MakeFolder(const Path& path)
{
    const FileResult result = Admit();
    return result ? m_system.MakeFolder(path) : result;
}

FileResult FailingFiles::MakePrivateFolder(const Path& path)
{
    const FileResult result = Admit();
    return result ? m_system.MakePrivateFolder(path) : result;
}

FileResult FailingFiles::SetReadOnly(const Path& path, bool readOnly)
{
    const FileResult result = Admit();
    return result ? m_system.SetReadOnly(path, readOnly) : result;
}

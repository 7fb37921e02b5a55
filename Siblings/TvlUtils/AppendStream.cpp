// Streams that add to a file.
#include "siblings/TvlUtils/Stream.h"

#include "siblings/TvlUtils/FileLayer.h"
#include "siblings/TvlUtils/FilePath.h"

namespace TvlUtils {

namespace {
class AppendSource final : public StreamSource {
public:
    AppendSource(std::unique_ptr<SystemIO::FileHandle> file, long long size) : m_file(std::move(file)), m_position(size)
    {
    }

    bool Read(void*, std::size_t) override { return false; }
    bool Write(const void* bytes, std::size_t size) override
    {
        // A second write for the rest could follow another process's bytes.
        std::size_t done = 0;
        if (size > 0 && (!m_file->WriteAt(m_position, bytes, size, done) || done < size))
            return false;
        m_position += static_cast<long long>(size);
        return true;
    }
    bool Seek(long long, SeekOrigin) override { return false; }
    long long GetPosition() const override { return m_position; }

private:
    std::unique_ptr<SystemIO::FileHandle> m_file;
    long long m_position;   // where the file ended when it was opened, and what was added since
};
}   // namespace

Stream Stream::AppendToFile(const TvlString& path)
try {
    const std::filesystem::path name = SystemIO::ToFilePath(path);
    auto& files = SystemIO::FileLayer::Get();
    std::unique_ptr<SystemIO::FileHandle> file;
    SystemIO::FileStatus status;
    if (!files.Open(name, SystemIO::OpenMode::Append, file) || !files.Stat(name, status))
        return {};
    return Stream(std::make_shared<AppendSource>(std::move(file), status.size));
} catch (const std::exception&) {
    // A name that the file system can't express.
    return {};
}

}   // namespace TvlUtils

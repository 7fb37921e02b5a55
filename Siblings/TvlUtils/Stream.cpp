// Streams over memory and over files.
#include "siblings/TvlUtils/FileStream.h"

#include "Windows/StreamInterface.h"
#include "siblings/TvlUtils/FileLayer.h"
#include "siblings/TvlUtils/FilePath.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace TvlUtils {

namespace {
constexpr auto kFurthest = std::numeric_limits<long long>::max();

/// A range of fixed size and the position in it.
class Extent {
public:
    explicit Extent(long long size) : m_size(size) { }

    long long Position() const { return m_position; }
    bool Holds(std::size_t count) const
    {
        return m_position <= m_size && count <= static_cast<unsigned long long>(m_size - m_position);
    }
    long long Left() const { return m_size - m_position; }
    void Advance(std::size_t count) { m_position += static_cast<long long>(count); }
    bool Seek(long long offset, SeekOrigin origin)
    {
        const long long base = origin == SeekOrigin::Current ? m_position : 0;
        if (offset < -base || offset > kFurthest - base)
            return false;
        m_position = base + offset;
        return true;
    }

private:
    long long m_size;
    long long m_position = 0;
};

class MemorySource final : public StreamSource {
public:
    MemorySource(const void* bytes, void* writable, std::size_t size)
        : m_bytes(static_cast<const unsigned char*>(bytes)), m_writable(static_cast<unsigned char*>(writable)),
          m_extent(static_cast<long long>(size))
    {
    }

    bool Read(void* bytes, std::size_t size) override
    {
        if (!m_extent.Holds(size))
            return false;
        if (size > 0)
            std::memcpy(bytes, m_bytes + m_extent.Position(), size);
        m_extent.Advance(size);
        return true;
    }
    bool Write(const void* bytes, std::size_t size) override
    {
        if (!m_writable || !m_extent.Holds(size))
            return false;
        if (size > 0)
            std::memcpy(m_writable + m_extent.Position(), bytes, size);
        m_extent.Advance(size);
        return true;
    }
    bool Seek(long long offset, SeekOrigin origin) override { return m_extent.Seek(offset, origin); }
    long long GetPosition() const override { return m_extent.Position(); }

private:
    const unsigned char* m_bytes;
    unsigned char* m_writable;   // null when the bytes can't be written
    Extent m_extent;
};

/// Keeps the bytes around the last read: readers of foreign formats jump to and fro in short steps.
class FileSource final : public StreamSource {
public:
    FileSource(std::unique_ptr<SystemIO::FileHandle> file, long long first, long long size)
        : m_file(std::move(file)), m_first(first), m_extent(size)
    {
    }

    bool Read(void* bytes, std::size_t size) override
    {
        if (!m_extent.Holds(size) || !(size > kKept ? ReadFile(bytes, size) : ReadKept(bytes, size)))
            return false;
        m_extent.Advance(size);
        return true;
    }
    bool Write(const void* bytes, std::size_t size) override
    {
        if (!m_extent.Holds(size))
            return false;
        m_kept.clear();
        const auto* const from = static_cast<const char*>(bytes);
        for (std::size_t written = 0; written < size;) {
            std::size_t done = 0;
            if (!m_file->WriteAt(Place(written), from + written, size - written, done))
                return false;
            written += done;
        }
        m_extent.Advance(size);
        return true;
    }
    bool Seek(long long offset, SeekOrigin origin) override { return m_extent.Seek(offset, origin); }
    long long GetPosition() const override { return m_extent.Position(); }

private:
    static constexpr std::size_t kKept = 8192;

    /// Where in the file the byte stands that is `ahead` of the position.
    long long Place(std::size_t ahead) const { return m_first + m_extent.Position() + static_cast<long long>(ahead); }
    bool ReadFile(void* bytes, std::size_t size)
    {
        std::size_t done = 0;
        return m_file->ReadAt(Place(0), bytes, size, done) && done == size;
    }
    bool ReadKept(void* bytes, std::size_t size)
    {
        const long long at = m_extent.Position();
        if (at < m_keptAt || at + static_cast<long long>(size) > m_keptAt + static_cast<long long>(m_kept.size())) {
            m_kept.resize(static_cast<std::size_t>(std::min<long long>(m_extent.Left(), kKept)));
            m_keptAt = at;
            if (!ReadFile(m_kept.data(), m_kept.size())) {
                // A bad place in the file behind what is asked for must not hide it.
                m_kept.clear();
                return ReadFile(bytes, size);
            }
        }
        std::copy_n(m_kept.begin() + (at - m_keptAt), size, static_cast<char*>(bytes));
        return true;
    }

    std::unique_ptr<SystemIO::FileHandle> m_file;
    long long m_first;   // of the range in the file
    Extent m_extent;
    std::vector<char> m_kept;   // bytes of the range from m_keptAt on
    long long m_keptAt = 0;
};
}   // namespace

std::size_t StreamSource::ReadSome(void* bytes, std::size_t size)
{
    // The longest run that can be read, bit by bit: sources know of exact reads alone.
    std::size_t done = 0;
    for (std::size_t step = size; step > 0 && done < size;) {
        const std::size_t piece = std::min(step, size - done);
        if (Read(static_cast<char*>(bytes) + done, piece))
            done += piece;
        else
            step = piece / 2;
    }
    return done;
}

Stream::operator IStream*() const
{
    if (!m_interface)
        m_interface = MakeStreamInterface(m_source);
    return m_interface.get();
}

Stream Stream::OverMemory(void* bytes, std::size_t size)
{
    return Stream(std::make_shared<MemorySource>(bytes, bytes, size));
}

Stream Stream::OverMemory(const void* bytes, std::size_t size)
{
    return Stream(std::make_shared<MemorySource>(bytes, nullptr, size));
}

namespace {
/// Opens the range of `size` bytes from `first` on, as far as the file has them when it is opened: `size` becomes that.
/// Null when the file can't be opened, is no regular file, or ends before `first`.
std::shared_ptr<FileSource> OpenSource(const TvlString& path, SystemIO::OpenMode mode, long long first, long long& size)
try {
    const std::filesystem::path name = SystemIO::ToFilePath(path);
    auto& files = SystemIO::FileLayer::Get();
    SystemIO::FileStatus status;
    std::unique_ptr<SystemIO::FileHandle> file;
    if (first < 0 || size < 0 || !files.Stat(name, status) || status.size < first || !files.Open(name, mode, file))
        return nullptr;
    size = std::min(size, status.size - first);
    return std::make_shared<FileSource>(std::move(file), first, size);
} catch (const std::exception&) {
    // A name that the file system can't express.
    return nullptr;
}
}   // namespace

Stream Stream::OpenFile(const TvlString& path, StreamAccess access, long long first, long long size)
{
    const auto mode = access == StreamAccess::ReadWrite ? SystemIO::OpenMode::ReadWrite : SystemIO::OpenMode::Read;
    const auto source = OpenSource(path, mode, first, size);
    return source ? Stream(source) : Stream();
}

FileStream FileStream::OpenForRead(const TvlString& path)
{
    long long size = kFurthest;
    const auto source = OpenSource(path, SystemIO::OpenMode::Read, 0, size);
    return source ? FileStream(Stream(source), size) : FileStream();
}

}   // namespace TvlUtils

// Streams over memory and over files.
#include "siblings/TvlUtils/Stream.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
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
    FileSource(std::fstream file, long long first, long long size)
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
        m_file.clear();
        m_file.seekp(m_first + m_extent.Position());
        // Flushed at once, so that the result tells whether the bytes have left the process.
        if (!m_file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size)).flush())
            return false;
        m_extent.Advance(size);
        return true;
    }
    bool Seek(long long offset, SeekOrigin origin) override { return m_extent.Seek(offset, origin); }
    long long GetPosition() const override { return m_extent.Position(); }

private:
    static constexpr std::size_t kKept = 8192;

    bool ReadFile(void* bytes, std::size_t size)
    {
        m_file.clear();
        m_file.seekg(m_first + m_extent.Position());
        return static_cast<bool>(m_file.read(static_cast<char*>(bytes), static_cast<std::streamsize>(size)));
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

    std::fstream m_file;
    long long m_first;   // of the range in the file
    Extent m_extent;
    std::vector<char> m_kept;   // bytes of the range from m_keptAt on
    long long m_keptAt = 0;
};
}   // namespace

Stream Stream::OverMemory(void* bytes, std::size_t size)
{
    return Stream(std::make_shared<MemorySource>(bytes, bytes, size));
}

Stream Stream::OverMemory(const void* bytes, std::size_t size)
{
    return Stream(std::make_shared<MemorySource>(bytes, nullptr, size));
}

Stream Stream::OpenFile(const TvlString& path, StreamAccess access, long long first, long long size)
try {
    const std::filesystem::path name(path.Std());
    // A folder opens for reading on some systems and then reports a size of its own.
    if (!std::filesystem::is_regular_file(name))
        return {};
    auto mode = std::ios::binary | std::ios::in;
    if (access == StreamAccess::ReadWrite)
        mode |= std::ios::out;
    std::fstream file;
    file.rdbuf()->pubsetbuf(nullptr, 0);   // the source keeps bytes itself
    file.open(name, mode);
    const long long length = file.seekg(0, std::ios::end) ? static_cast<long long>(file.tellg()) : -1;
    if (first < 0 || size < 0 || length < first)
        return {};
    return Stream(std::make_shared<FileSource>(std::move(file), first, std::min(size, length - first)));
} catch (const std::exception&) {
    // A name that the file system can't express.
    return {};
}

}   // namespace TvlUtils

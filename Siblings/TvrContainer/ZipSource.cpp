#include "TvrContainer/ZipSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace TvrContainers {

namespace {
constexpr long long kMostReserved = 16 << 20;   // bytes
}

ZipArchive::Source::Source(PieceReader* reader) : m_reader(reader) { zip_error_init(&m_error); }
ZipArchive::Source::~Source() { zip_error_fini(&m_error); }
zip_source_t* ZipArchive::Source::Make() { return zip_source_function_create(Callback, this, nullptr); }

void ZipArchive::Source::Rethrow()
{
    if (m_thrown)
        std::rethrow_exception(std::exchange(m_thrown, nullptr));
}

zip_int64_t ZipArchive::Source::Callback(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command)
{
    auto& source = *static_cast<Source*>(self);
    try {
        return source.Run(data, size, command);
    } catch (...) {
        source.m_thrown = std::current_exception();
        return source.Fail(ZIP_ER_MEMORY, 0);
    }
}

zip_int64_t ZipArchive::Source::Run(void* data, zip_uint64_t size, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_SUPPORTS, ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
            ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_REMOVE,
            ZIP_SOURCE_BEGIN_WRITE, ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_WRITE,
            ZIP_SOURCE_SEEK_WRITE, ZIP_SOURCE_TELL_WRITE, -1);
    case ZIP_SOURCE_OPEN:
        m_position = 0;
        return 0;
    case ZIP_SOURCE_READ:
        return Read(data, size);
    case ZIP_SOURCE_STAT:
        return Describe(data);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, data, size);
    case ZIP_SOURCE_SEEK:
        return Seek(m_position, m_reader ? m_reader->Size() : 0, data, size);
    case ZIP_SOURCE_TELL:
        return m_position;
    case ZIP_SOURCE_WRITE:
        return Write(data, size);
    case ZIP_SOURCE_SEEK_WRITE:
        return Seek(m_outputPosition, static_cast<long long>(m_output.size()), data, size);
    case ZIP_SOURCE_TELL_WRITE:
        return m_outputPosition;
    case ZIP_SOURCE_BEGIN_WRITE:
        // About as large as it was, most often. What is larger grows as it is written.
        m_output.reserve(static_cast<std::size_t>(std::clamp(m_reader ? m_reader->Size() : 0, 0LL, kMostReserved)));
        return 0;
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
    case ZIP_SOURCE_COMMIT_WRITE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_REMOVE:
        return 0;
    default:
        return Fail(ZIP_ER_OPNOTSUPP, 0);
    }
}

zip_int64_t ZipArchive::Source::Fail(int error, int reason)
{
    zip_error_set(&m_error, error, reason);
    return -1;
}

zip_int64_t ZipArchive::Source::Read(void* data, zip_uint64_t size)
{
    std::size_t done = 0;
    if (!m_reader || !m_reader->ReadSome(m_position, data, static_cast<std::size_t>(size), done))
        return Fail(ZIP_ER_READ, EIO);
    m_position += static_cast<long long>(done);
    return static_cast<zip_int64_t>(done);
}

zip_int64_t ZipArchive::Source::Write(const void* data, zip_uint64_t size)
{
    const auto at = static_cast<std::size_t>(m_outputPosition);
    const std::size_t over = std::min(m_output.size() - std::min(at, m_output.size()), static_cast<std::size_t>(size));
    const auto* const bytes = static_cast<const char*>(data);
    m_output.replace(at, over, bytes, static_cast<std::size_t>(size));
    m_outputPosition += static_cast<long long>(size);
    return static_cast<zip_int64_t>(size);
}

zip_int64_t ZipArchive::Source::Describe(void* data)
{
    if (!m_reader)
        return Fail(ZIP_ER_READ, ENOENT);
    auto* const description = static_cast<zip_stat_t*>(data);
    zip_stat_init(description);
    description->size = static_cast<zip_uint64_t>(m_reader->Size());
    description->valid = ZIP_STAT_SIZE;
    return sizeof *description;
}

zip_int64_t ZipArchive::Source::Seek(long long& position, long long end, void* data, zip_uint64_t size)
{
    const zip_int64_t place = zip_source_seek_compute_offset(
        static_cast<zip_uint64_t>(position), static_cast<zip_uint64_t>(end), data, size, &m_error);
    if (place < 0)
        return -1;
    position = place;
    return 0;
}

}   // namespace TvrContainers

#include "TvrContainer/EntryWriter.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace TvrContainers {

bool EntryWriter::Read(void* bytes, std::size_t size)
{
    const auto all = static_cast<long long>(m_bytes.size());
    if (m_position > all || size > static_cast<unsigned long long>(all - m_position))
        return false;
    if (size > 0)
        std::memcpy(bytes, m_bytes.data() + m_position, size);
    m_position += static_cast<long long>(size);
    return true;
}

bool EntryWriter::Write(const void* bytes, std::size_t size)
{
    m_isWritten = true;
    if (m_position > m_limit || size > static_cast<unsigned long long>(m_limit - m_position)) {
        m_hasFailed = true;
        return false;
    }
    try {
        const auto at = static_cast<std::size_t>(m_position);
        m_bytes.resize(std::max(m_bytes.size(), at + size));
        std::copy_n(static_cast<const char*>(bytes), size, m_bytes.begin() + m_position);
    } catch (const std::bad_alloc&) {
        m_hasFailed = true;
        return false;
    }
    m_position += static_cast<long long>(size);
    return true;
}

bool EntryWriter::Seek(long long offset, TvlUtils::SeekOrigin origin)
{
    const long long base = origin == TvlUtils::SeekOrigin::Current ? m_position : 0;
    if (offset < -base || offset > std::numeric_limits<long long>::max() - base)
        return false;
    m_position = base + offset;
    return true;
}

}   // namespace TvrContainers

#include "ExifFormat.h"

#include <algorithm>
#include <utility>

using TvlUtils::SeekOrigin;

namespace {
constexpr std::size_t kHeaderSize = 8;
constexpr std::uint16_t kMagic = 42;
constexpr std::int32_t kLeastOffset = kHeaderSize;

// Directories of a sound block don't overlap. Where they do, a small stream could hold billions of entries: that many
// bytes of entries may be read beyond what directories side by side would have (2 million entries).
constexpr long long kSharedBytes = (1LL << 21) * ExifDirectoryEntry::kSize;

bool IsBigEndian(const unsigned char* header) { return header[0] == 'M' && header[1] == 'M'; }
bool IsLittleEndian(const unsigned char* header) { return header[0] == 'I' && header[1] == 'I'; }
}   // namespace

ExifCharacterCode ReadCharacterCode(const unsigned char* prefix)
{
    // Both with zero bytes up to 8.
    if (std::memcmp(prefix, "ASCII\0\0", 8) == 0)
        return kCodeAscii;
    return std::memcmp(prefix, "UNICODE", 8) == 0 ? kCodeUnicode : kCodeOther;
}

ExifDirectoryWalk::ExifDirectoryWalk(TvlUtils::Stream& stream) : m_stream(stream)
{
    unsigned char header[kHeaderSize];
    m_failed = true;
    if (!stream.Read(header, sizeof header) || (!IsBigEndian(header) && !IsLittleEndian(header)))
        return;
    m_order = ExifByteOrder(IsBigEndian(header));
    m_next = static_cast<std::int32_t>(m_order.Load<std::uint32_t>(header + 4));
    m_failed = m_order.Load<std::uint16_t>(header + 2) != kMagic || m_next < kLeastOffset;
}

/// Holds the next entries of this directory, or of the one that follows it.
bool ExifDirectoryWalk::Advance()
{
    while (m_used == m_held) {
        if (m_failed || !(m_left > 0 ? HoldEntries() : EnterDirectory()))
            return false;
    }
    return true;
}

long long ExifDirectoryWalk::ValueFieldPosition() const
{
    const std::size_t behind = (m_held - m_used + 1) * ExifDirectoryEntry::kSize - ExifDirectoryEntry::kValueField;
    return m_end - static_cast<long long>(behind);
}

bool ExifDirectoryWalk::Fail()
{
    m_failed = true;
    return false;
}

bool ExifDirectoryWalk::EnterDirectory()
{
    const std::int32_t offset = std::exchange(m_next, 0);
    if (offset <= 0)
        return false;
    unsigned char count[2];
    if (!IsFirstVisit(offset) || m_walkedBytes > m_furthest + kSharedBytes)
        return Fail();
    if (!m_stream.Seek(offset, SeekOrigin::Start) || !m_stream.Read(count, sizeof count))
        return Fail();
    m_left = m_order.Load<std::uint16_t>(count);
    m_end = offset + static_cast<long long>(sizeof count);
    return true;
}

/// Notes a directory. A set alone would allocate in each of the usual blocks, which have two.
bool ExifDirectoryWalk::IsFirstVisit(std::int32_t offset)
{
    const auto listed = m_listed.begin() + static_cast<std::ptrdiff_t>(std::min(m_directories, m_listed.size()));
    if (std::find(m_listed.begin(), listed, offset) != listed)
        return false;
    if (m_directories++ >= m_listed.size())
        return m_visited.insert(offset).second;
    *listed = offset;
    return true;
}

bool ExifDirectoryWalk::HoldEntries()
{
    // At a cut end of the stream the entries before it count.
    return ReadEntries(std::min(m_left, kHeldEntries)) || ReadEntries(1) || Fail();
}

bool ExifDirectoryWalk::ReadEntries(std::size_t count)
{
    const std::size_t size = count * ExifDirectoryEntry::kSize;
    // Reading values has moved the position meanwhile.
    if (!m_stream.Seek(m_end, SeekOrigin::Start) || !m_stream.Read(m_bytes.data(), size))
        return false;
    m_left -= count;
    m_held = count;
    m_used = 0;
    m_end += static_cast<long long>(size);
    m_walkedBytes += static_cast<long long>(size);
    m_furthest = std::max(m_furthest, m_end);
    return true;
}

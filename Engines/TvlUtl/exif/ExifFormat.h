// The TIFF structure that an Exif block has: numbers of the format, and the walk through its directories.
#pragma once

#include "siblings/TvlUtils/Stream.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <unordered_set>

/// Tag ids with a part of their own in reading.
enum ExifTagId : std::uint32_t {
    kTagOrientation = 274,
    kTagHorizontalResolution = 282,
    kTagVerticalResolution = 283,
    kTagResolutionUnit = 296,
    kTagExifDirectory = 34665,   // its value is the directory's offset
    kTagMakerNote = 37500,
};

/// Value types of TIFF 6.0 that are read; all others have no size here.
enum ExifType : std::uint32_t {
    kTypeByte = 1,
    kTypeText = 2,
    kTypeShort = 3,
    kTypeLong = 4,
    kTypeRational = 5,
    kTypeUndefined = 7,
    kTypeSignedLong = 9,
    kTypeSignedRational = 10,
};

/// Bytes of one item by its type; 0 for a type that is not read.
constexpr std::uint32_t ExifItemSize(std::uint32_t type)
{
    constexpr std::array<std::uint8_t, 11> kSizes = {0, 1, 1, 2, 4, 8, 0, 1, 0, 4, 8};
    return type < kSizes.size() ? kSizes[type] : 0;
}

/// What the 8 bytes before a text say of its characters.
enum ExifCharacterCode : int {
    kCodeAscii = 11,
    kCodeUnicode = 12,   // UTF-16, here always little-endian
    kCodeOther = 13,
};

/// The code that 8 bytes name.
ExifCharacterCode ReadCharacterCode(const unsigned char* prefix);

/// Reads and writes numbers in a block's byte order.
class ExifByteOrder {
public:
    ExifByteOrder() = default;
    explicit ExifByteOrder(bool bigEndian) : m_swap(bigEndian != (std::endian::native == std::endian::big)) { }

    /// `Number` is an unsigned number of 16 or 32 bits.
    template <class Number>
    Number Load(const unsigned char* bytes) const
    {
        Number number;
        std::memcpy(&number, bytes, sizeof number);
        return Ordered(number);
    }
    template <class Number>
    void Store(unsigned char* bytes, Number number) const
    {
        number = Ordered(number);
        std::memcpy(bytes, &number, sizeof number);
    }

private:
    std::uint16_t Ordered(std::uint16_t value) const
    {
        return m_swap ? static_cast<std::uint16_t>(value << 8 | value >> 8) : value;
    }
    std::uint32_t Ordered(std::uint32_t value) const
    {
        return m_swap ? value << 24 | (value & 0xFF00) << 8 | (value >> 8 & 0xFF00) | value >> 24 : value;
    }

    bool m_swap = false;
};

/// One entry of a directory, as it stands in the stream.
struct ExifDirectoryEntry {
    static constexpr std::size_t kSize = 12;
    static constexpr std::size_t kValueField = 8;   // offset of the 4 bytes that hold the value or its offset
    static constexpr std::uint64_t kLargestValue = 65536;

    ExifDirectoryEntry() = default;
    ExifDirectoryEntry(const unsigned char* bytes, ExifByteOrder byteOrder)
        : id(byteOrder.Load<std::uint16_t>(bytes)), type(byteOrder.Load<std::uint16_t>(bytes + 2)),
          count(byteOrder.Load<std::uint32_t>(bytes + 4)), order(byteOrder)
    {
        std::memcpy(field, bytes + kValueField, sizeof field);
    }

    /// Bytes of the value; 0 for an entry that is never read into a tag.
    std::uint32_t ValueSize() const
    {
        const std::uint64_t size = std::uint64_t{ExifItemSize(type)} * count;
        return id == kTagMakerNote || size > kLargestValue ? 0 : static_cast<std::uint32_t>(size);
    }
    std::uint32_t ValueOffset() const { return order.Load<std::uint32_t>(field); }

    std::uint32_t id = 0;
    std::uint32_t type = 0;
    std::uint32_t count = 0;
    unsigned char field[4] = {};
    ExifByteOrder order;
};

/// Goes through the entries of the first directory and of those that the caller follows from there, in that order.
/// The link to a next directory that stands behind the entries is never read.
class ExifDirectoryWalk {
public:
    /// Reads the header at the stream's position.
    explicit ExifDirectoryWalk(TvlUtils::Stream& stream);

    /// The next entry, valid until the next call; null at the end of the walk, or of what can be read of it.
    const ExifDirectoryEntry* Next()
    {
        if (m_used == m_held && !Advance())
            return nullptr;
        m_entry = ExifDirectoryEntry(m_bytes.data() + m_used++ * ExifDirectoryEntry::kSize, m_order);
        return &m_entry;
    }
    /// Goes on at `offset` after the last entry of this directory. The last call counts; 0 and above 2 GiB is nowhere.
    void Follow(std::uint32_t offset) { m_next = static_cast<std::int32_t>(offset); }
    /// After Next gave null: whether everything could be read.
    bool Succeeded() const { return !m_failed; }
    /// Offset of the last entry's value field in the stream.
    long long ValueFieldPosition() const;

private:
    bool Fail();
    bool Advance();
    bool EnterDirectory();
    bool IsFirstVisit(std::int32_t offset);
    bool HoldEntries();
    bool ReadEntries(std::size_t count);

    // Entries are read in pieces: one read for many entries, and never more than the stream has.
    static constexpr std::size_t kHeldEntries = 40;
    static constexpr std::size_t kListedDirectories = 4;

    TvlUtils::Stream& m_stream;
    ExifByteOrder m_order;
    bool m_failed = false;
    std::int32_t m_next = 0;                                   // offset of the directory to enter
    std::size_t m_left = 0;                                    // entries of this directory, not yet held
    std::size_t m_used = 0;                                    // of the held entries
    std::size_t m_held = 0;                                    // entries in m_bytes
    long long m_end = 0;                                       // of the held entries in the stream
    long long m_furthest = 0;                                  // end of all entries read so far
    long long m_walkedBytes = 0;                               // of entries, counted at each visit
    std::size_t m_directories = 0;                             // entered so far
    std::array<std::int32_t, kListedDirectories> m_listed{};   // the first of them
    std::unordered_set<std::int32_t> m_visited;                // the others
    ExifDirectoryEntry m_entry;
    std::array<unsigned char, kHeldEntries * ExifDirectoryEntry::kSize> m_bytes;
};

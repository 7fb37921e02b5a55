// Reading a tag, and its items.
#include "CExif.h"
#include "ExifFormat.h"
#include "ExifMemory.h"
#include "ExifReading.h"

#include <algorithm>
#include <limits>
#include <utility>

using TvlUtils::SeekOrigin;
using TvlUtils::Stream;

namespace {
/// Whether a value lies within the stream, without reading it.
bool Holds(Stream& stream, long long offset, std::uint32_t size)
{
    unsigned char last;
    return stream.Seek(offset + size - 1, SeekOrigin::Start) && stream.Read(&last, 1);
}

/// Copies a value from its field or its offset.
bool ReadValue(const ExifDirectoryEntry& entry, Stream& stream, unsigned char* bytes, std::uint32_t size)
{
    if (size > sizeof entry.field)
        return stream.Seek(entry.ValueOffset(), SeekOrigin::Start) && stream.Read(bytes, size);
    std::copy_n(entry.field, size, bytes);
    return true;
}

/// Turns `size` bytes of numbers into host byte order.
template <class Number>
void ToHostOrder(unsigned char* bytes, std::uint32_t size, ExifByteOrder order)
{
    for (std::uint32_t at = 0; at < size; at += sizeof(Number)) {
        const auto number = order.Load<Number>(bytes + at);
        std::memcpy(bytes + at, &number, sizeof number);
    }
}
}   // namespace

CExifTag::~CExifTag() { ExifMemory::Free(data); }

unsigned char* CExifTag::AllocateData(unsigned int size)
{
    return static_cast<unsigned char*>(ExifMemory::AllocateAlone(size));
}

eFileRead CExifTag::ReadTag(Stream stream, int bigEndian)
{
    unsigned char bytes[ExifDirectoryEntry::kSize];
    if (!stream.Read(bytes, sizeof bytes))
        return eFileReadError;
    const ExifDirectoryEntry entry(bytes, ExifByteOrder(bigEndian != 0));
    const long long behind = stream.GetPosition();
    ExifReading reading{stream, nullptr, ExifDirectoryEntry::kLargestValue};
    const eFileRead result = ReadEntry(entry, reading);
    stream.Seek(behind, SeekOrigin::Start);
    return result;
}

/// Takes over an entry with its value. Moves the stream.
eFileRead CExifTag::ReadEntry(const ExifDirectoryEntry& entry, ExifReading& reading)
{
    // From here on a value is looked for before it gets memory: its size may be a lie.
    constexpr std::uint32_t kLargeValue = 4096;

    ExifMemory::Free(std::exchange(data, nullptr));
    id = entry.id;
    type = entry.type;
    count = entry.count;
    const std::uint32_t size = entry.ValueSize();
    if (size == 0)
        return eFileReadSkipped;
    if (size > reading.room || (size >= kLargeValue && !Holds(reading.stream, entry.ValueOffset(), size)))
        return eFileReadNoValue;
    auto* const value =
        static_cast<unsigned char*>(reading.memory ? reading.memory->Allocate(size) : ExifMemory::AllocateAlone(size));
    if (!value || !ReadValue(entry, reading.stream, value, size)) {
        ExifMemory::Free(value);
        return eFileReadNoValue;
    }

    const std::uint32_t itemSize = ExifItemSize(type);
    if (itemSize == 2)
        ToHostOrder<std::uint16_t>(value, size, entry.order);
    else if (itemSize > 2)   // a rational is two numbers of 4 bytes
        ToHostOrder<std::uint32_t>(value, size, entry.order);
    if (type == kTypeText)
        value[size - 1] = 0;
    reading.room -= size;
    data = value;
    return eFileReadOk;
}

unsigned int CExifTag::GetDataItemSize() const { return ExifItemSize(type); }

unsigned int CExifTag::GetBufferSize() const
{
    return static_cast<unsigned int>(
        std::min<std::uint64_t>(std::uint64_t{GetDataItemSize()} * count, std::numeric_limits<unsigned int>::max()));
}

int CExifTag::GetSingleValue(unsigned int index, void* out, unsigned int outSize)
{
    const std::size_t itemSize = GetDataItemSize();
    if (outSize < itemSize || index >= count)
        return 0;
    if (itemSize == 0)
        return 1;
    if (!data)
        return 0;
    std::memcpy(out, data + index * itemSize, itemSize);
    return 1;
}

int CExifTag::GetAllValues(void* out, unsigned int outSize)
{
    const std::uint64_t size = std::uint64_t{GetDataItemSize()} * count;
    if (outSize < size)
        return 0;
    if (size == 0)
        return 1;
    if (!data)
        return 0;
    std::memcpy(out, data, size);
    return 1;
}

int CExifTag::GetByteCode(unsigned char* prefix) { return prefix ? ReadCharacterCode(prefix) : kCodeOther; }

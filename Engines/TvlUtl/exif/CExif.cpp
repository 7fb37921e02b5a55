// The list of tags, and patching one in the stream.
#include "CExif.h"
#include "ExifFormat.h"
#include "ExifReading.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <memory>
#include <new>

using TvlUtils::SeekOrigin;
using TvlUtils::Stream;

namespace {
// Bytes of all values of one object: far above what images have, and few enough that a hostile one, whose entries all
// share one value, does not take the machine's memory.
constexpr unsigned long long kRoomForValues = 64ULL << 20;

unsigned long long RoomLeft(const std::vector<CExifTag*>& tags)
{
    unsigned long long room = kRoomForValues;
    for (const CExifTag* tag : tags)
        room -= std::min<unsigned long long>(room, tag->GetBufferSize());
    return room;
}

CExifTag* NewTag(ExifMemory& memory)
{
    void* const block = memory.Allocate(sizeof(CExifTag));
    if (!block)
        throw std::bad_alloc();
    return new (block) CExifTag;
}

void Discard(CExifTag* tag)
{
    tag->~CExifTag();
    ExifMemory::Free(tag);
}

/// Where a pointer tag leads; 0 for nowhere.
std::uint32_t Target(CExifTag& pointer)
{
    std::uint32_t offset = 0;
    pointer.GetSingleValue(0, &offset, sizeof offset);
    return offset;
}

/// The 4 bytes of a value field that hold `value`; zeroes for the types that can't be patched.
std::array<unsigned char, 4> ValueField(const ExifDirectoryEntry& entry, int value)
{
    std::array<unsigned char, 4> field{};
    if (entry.type == kTypeByte)
        field[0] = static_cast<unsigned char>(value);
    else if (entry.type == kTypeShort)
        entry.order.Store(field.data(), static_cast<std::uint16_t>(value));
    else if (entry.type == kTypeLong)
        entry.order.Store(field.data(), static_cast<std::uint32_t>(value));
    return field;
}
}   // namespace

CExif::~CExif()
{
    for (CExifTag* tag : tags)
        Discard(tag);
    if (!m_tempFileName.IsEmpty())
        TvlUtils::SystemIO::File::Delete(m_tempFileName.c_str());
}

int CExif::ParseData(Stream stream)
try {
    // More than most photos have: the list grows once.
    constexpr std::size_t kUsualTags = 64;

    ExifMemory memory;
    ExifReading reading{stream, &memory, RoomLeft(tags)};
    if (tags.empty())
        tags.reserve(kUsualTags);
    ExifDirectoryWalk walk(stream);
    std::unique_ptr<CExifTag, void (*)(CExifTag*)> tag(nullptr, Discard);
    while (const ExifDirectoryEntry* entry = walk.Next()) {
        // An entry that was left away gives its tag to the next one.
        if (!tag)
            tag.reset(NewTag(memory));
        if (tag->ReadEntry(*entry, reading) != eFileReadOk)
            continue;
        tags.push_back(tag.get());
        if (tag.release()->id == kTagExifDirectory)
            walk.Follow(Target(*tags.back()));
    }
    return walk.Succeeded();
} catch (const std::bad_alloc&) {
    return 0;
}

int CExif::ReplaceData(Stream stream, int tagId, int value)
try {
    ExifReading reading{stream, nullptr, kRoomForValues};
    ExifDirectoryWalk walk(stream);
    while (const ExifDirectoryEntry* entry = walk.Next()) {
        const bool isPointer = entry->id == kTagExifDirectory;
        if (!isPointer && entry->id != static_cast<std::uint32_t>(tagId))
            continue;
        CExifTag tag;
        if (tag.ReadEntry(*entry, reading) != eFileReadOk)
            continue;
        if (isPointer) {
            walk.Follow(Target(tag));
            continue;
        }
        const auto field = ValueField(*entry, value);
        return stream.Seek(walk.ValueFieldPosition(), SeekOrigin::Start) && stream.Write(field.data(), field.size());
    }
    return 0;
} catch (const std::bad_alloc&) {
    return 0;
}

CExifTag* CExif::GetAt(int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < tags.size() ? tags[static_cast<std::size_t>(index)]
                                                                       : nullptr;
}

CExifTag* CExif::FindTag(unsigned int id)
{
    for (CExifTag* tag : tags)
        if (tag->id == id)
            return tag;
    return nullptr;
}

int CExif::GetHRes(double& resolution, unsigned short& unit)
{
    return GetRes(kTagHorizontalResolution, resolution, unit);
}

int CExif::GetVRes(double& resolution, unsigned short& unit)
{
    return GetRes(kTagVerticalResolution, resolution, unit);
}

int CExif::GetRes(unsigned int id, double& resolution, unsigned short& unit)
{
    CExifTag* const tag = FindTag(id);
    if (!tag)
        return 0;
    std::uint32_t ratio[2] = {};   // numerator, denominator
    tag->GetSingleValue(0, ratio, sizeof ratio);
    if (ratio[1] != 0)
        resolution = static_cast<double>(ratio[0]) / ratio[1];
    // Also without a resolution: callers take the unit for granted.
    if (CExifTag* const unitTag = FindTag(kTagResolutionUnit))
        unitTag->GetSingleValue(0, &unit, sizeof unit);
    return ratio[1] != 0;
}

int CExif::GetOrientation(short& orientation)
{
    CExifTag* const tag = FindTag(kTagOrientation);
    return tag ? tag->GetSingleValue(0, &orientation, sizeof orientation) : 0;
}

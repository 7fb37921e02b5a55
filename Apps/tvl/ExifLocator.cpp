#include "ExifLocator.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

using TvlUtils::SeekOrigin;
using TvlUtils::Stream;

namespace {
constexpr long long kHeaderSize = 8;   // of TIFF: nothing shorter is a block
// Segments or chunks looked at, and fill bytes before a segment: far more than files have, and found in no time.
constexpr int kMostPieces = 1 << 18;
constexpr std::size_t kSignatureSize = 12;   // the longest of the four

std::uint32_t BigEndian(const unsigned char* bytes, unsigned width)
{
    std::uint32_t number = 0;
    for (unsigned i = 0; i < width; ++i)
        number = number << 8 | bytes[i];
    return number;
}

std::uint32_t LittleEndian32(const unsigned char* bytes)
{
    return BigEndian(bytes + 3, 1) << 24 | BigEndian(bytes + 2, 1) << 16 | BigEndian(bytes + 1, 1) << 8 | bytes[0];
}

bool ReadAt(Stream& file, long long offset, void* bytes, std::size_t size)
{
    return file.Seek(offset, SeekOrigin::Start) && file.Read(bytes, size);
}

/// The block in `size` bytes at `offset`, behind the mark that JPEG demands and some writers of the other formats add.
ExifPlace BlockIn(Stream& file, long long offset, long long size)
{
    constexpr std::string_view kMark("Exif\0", 5);   // and one byte of padding
    char mark[kMark.size() + 1];
    if (size >= static_cast<long long>(sizeof mark) && ReadAt(file, offset, mark, sizeof mark)
        && kMark == std::string_view(mark, kMark.size())) {
        offset += static_cast<long long>(sizeof mark);
        size -= static_cast<long long>(sizeof mark);
    }
    return {size < kHeaderSize ? ExifSearch::Damaged : ExifSearch::Found, offset, size};
}

ExifPlace LocateInJpeg(Stream& file)
{
    enum Marker : unsigned char { kFill = 0xFF, kStart = 0xDA, kEnd = 0xD9, kApplication1 = 0xE1 };
    const auto standsAlone = [](unsigned char marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8); };

    long long at = 2;
    for (int piece = 0; piece < kMostPieces; ++piece) {
        unsigned char marker[2];
        if (!ReadAt(file, at, marker, sizeof marker) || marker[0] != kFill)
            return {ExifSearch::Damaged};
        at += marker[1] == kFill ? 1 : 2;
        if (marker[1] == kStart || marker[1] == kEnd)
            return {ExifSearch::NoBlock};
        if (marker[1] == kFill || standsAlone(marker[1]))
            continue;
        unsigned char segment[2 + 5];   // size, and the mark of an Exif segment
        if (!ReadAt(file, at, segment, 2))
            return {ExifSearch::Damaged};
        const long long size = BigEndian(segment, 2);   // its own 2 bytes count
        if (size < 2)
            return {ExifSearch::Damaged};
        const bool isExif = marker[1] == kApplication1 && size >= static_cast<long long>(sizeof segment)
            && ReadAt(file, at, segment, sizeof segment) && std::memcmp(segment + 2, "Exif", 5) == 0;
        if (isExif)
            return BlockIn(file, at + 2, size - 2);
        at += size;
    }
    return {ExifSearch::Damaged};
}

ExifPlace LocateInPng(Stream& file)
{
    constexpr long long kHead = 8;    // size and type of a chunk
    constexpr long long kCheck = 4;   // behind it
    unsigned char head[kHead];
    long long at = kHead;
    for (int piece = 0; piece < kMostPieces && ReadAt(file, at, head, sizeof head); ++piece) {
        const long long size = BigEndian(head, 4);
        const std::string_view type(reinterpret_cast<const char*>(head + 4), 4);
        if (type == "IEND")
            return {ExifSearch::NoBlock};
        if (type == "eXIf") {
            ExifPlace place = BlockIn(file, at + kHead, size);
            place.checkedOffset = at + 4;
            place.checkedSize = 4 + size;
            return place;
        }
        at += kHead + size + kCheck;
    }
    return {ExifSearch::Damaged};
}

ExifPlace LocateInWebp(Stream& file)
{
    constexpr long long kHead = 8;   // type and size of a chunk
    unsigned char head[kHead];
    if (!ReadAt(file, 0, head, sizeof head) || std::memcmp(head, "RIFF", 4) != 0)
        return {ExifSearch::UnknownFormat};
    const long long end = kHead + LittleEndian32(head + 4);
    long long at = kSignatureSize;
    for (int piece = 0; piece < kMostPieces && at + kHead <= end; ++piece) {
        if (!ReadAt(file, at, head, sizeof head))
            return {ExifSearch::Damaged};
        const long long size = LittleEndian32(head + 4);
        if (std::memcmp(head, "EXIF", 4) == 0)
            return BlockIn(file, at + kHead, size);
        at += kHead + size + size % 2;
    }
    // The last chunk may lack its padding.
    return {at <= end + 1 ? ExifSearch::NoBlock : ExifSearch::Damaged};
}

ExifPlace WholeFile(Stream&) { return {ExifSearch::Found}; }

struct Format {
    std::size_t offset;
    std::string_view signature;
    ExifPlace (*locate)(Stream&);
};
constexpr Format kFormats[] = {
    {0, "\xFF\xD8\xFF", LocateInJpeg},
    {0, {"II*\0", 4}, WholeFile},
    {0, {"MM\0*", 4}, WholeFile},
    {0, "\x89PNG\r\n\x1A\n", LocateInPng},
    {8, "WEBP", LocateInWebp},
};

/// CRC-32 of ISO 3309 over a range of the file; false when it can't be read.
bool CheckSum(Stream& file, long long offset, long long size, std::uint32_t& sum)
{
    std::array<unsigned char, 4096> bytes;
    sum = 0xFFFFFFFF;
    for (long long done = 0; done < size;) {
        const auto piece = static_cast<std::size_t>(std::min<long long>(size - done, bytes.size()));
        if (!ReadAt(file, offset + done, bytes.data(), piece))
            return false;
        for (std::size_t i = 0; i < piece; ++i) {
            sum ^= bytes[i];
            for (int bit = 0; bit < 8; ++bit)
                sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
        }
        done += static_cast<long long>(piece);
    }
    sum = ~sum;
    return true;
}
}   // namespace

ExifPlace LocateExif(Stream& file)
{
    char start[kSignatureSize];
    if (!ReadAt(file, 0, start, sizeof start))
        return {ExifSearch::UnknownFormat};
    for (const Format& format : kFormats) {
        if (std::string_view(start, sizeof start).substr(format.offset, format.signature.size()) == format.signature)
            return format.locate(file);
    }
    return {ExifSearch::UnknownFormat};
}

bool RenewCheckSum(Stream& file, const ExifPlace& place)
{
    std::uint32_t sum = 0;
    if (place.checkedSize == 0)
        return true;
    if (!CheckSum(file, place.checkedOffset, place.checkedSize, sum))
        return false;
    const unsigned char bytes[] = {static_cast<unsigned char>(sum >> 24), static_cast<unsigned char>(sum >> 16),
        static_cast<unsigned char>(sum >> 8), static_cast<unsigned char>(sum)};
    return file.Seek(place.checkedOffset + place.checkedSize, SeekOrigin::Start) && file.Write(bytes, sizeof bytes);
}

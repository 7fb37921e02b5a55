// Reading and patching Exif blocks in memory, beside libexif and exiv2 on the same blocks: one as a camera writes it, and
// those of the real photos in the folder TVL_EXIF_PHOTOS, if it is set (build/corpora, once the corpora are there). All blocks
// are without their maker note, which only the peers take apart.
#include "CExif.h"
#include "ExifBlock.h"
#include "ExifLocator.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <exiv2/exiv2.hpp>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <libexif/exif-data.h>
#include <string>
#include <vector>

namespace {
using Bytes = ExifBlock::Bytes;
using Blocks = std::vector<Bytes>;
using TvlUtils::Stream;

constexpr std::string_view kLibexifPrefix("Exif\0\0", 6);   // expects the block as it stands in a JPEG file

void Parse_Own(benchmark::State& state, const Blocks& blocks)
{
    for (auto _ : state) {
        for (const Bytes& block : blocks) {
            CExif exif;
            if (!exif.ParseData(Stream::OverMemory(block.data(), block.size())))
                state.SkipWithError("not read");
            benchmark::DoNotOptimize(exif.GetAt(0));
        }
    }
}

void Parse_Libexif(benchmark::State& state, Blocks blocks)
{
    for (Bytes& block : blocks)
        block.insert(block.begin(), kLibexifPrefix.begin(), kLibexifPrefix.end());
    for (auto _ : state) {
        for (const Bytes& block : blocks) {
            ExifData* const data = exif_data_new_from_data(block.data(), static_cast<unsigned>(block.size()));
            benchmark::DoNotOptimize(data);
            exif_data_unref(data);
        }
    }
}

void Parse_Exiv2(benchmark::State& state, const Blocks& blocks)
{
    for (auto _ : state) {
        for (const Bytes& block : blocks) {
            Exiv2::ExifData data;
            Exiv2::ExifParser::decode(data, block.data(), static_cast<std::uint32_t>(block.size()));
            benchmark::DoNotOptimize(data.count());
        }
    }
}

void Orient_Own(benchmark::State& state, Blocks blocks)
{
    int value = 0;
    for (auto _ : state) {
        ++value;
        for (Bytes& block : blocks) {
            if (!CExif().ReplaceData(Stream::OverMemory(block.data(), block.size()), 274, value % 8 + 1))
                state.SkipWithError("not patched");
        }
    }
}

/// exiv2's in-place way: the changed data is written into the block that it was read from.
void Orient_Exiv2(benchmark::State& state, Blocks blocks)
{
    int value = 0;
    for (auto _ : state) {
        ++value;
        for (Bytes& block : blocks) {
            Exiv2::ExifData data;
            const auto size = static_cast<std::uint32_t>(block.size());
            const auto order = Exiv2::ExifParser::decode(data, block.data(), size);
            data["Exif.Image.Orientation"] = static_cast<std::uint16_t>(value % 8 + 1);
            Exiv2::Blob rewritten;
            Exiv2::ExifParser::encode(rewritten, block.data(), size, order, data);
            if (!rewritten.empty())
                state.SkipWithError("not in place");
        }
    }
}

/// A camera's orientation and so many numbers under ids that no standard gives. exiv2 takes 255 entries of a directory.
Bytes BlockWithTags(unsigned count)
{
    constexpr unsigned kFirst = 0xC800;
    ExifBlock block(false);
    block.Shorts(274, {1});
    for (unsigned i = 0; i < count; ++i)
        block.Rationals(kFirst + i, {i + 1, 7});
    return block.Build();
}

/// The same with one comment of so many bytes.
Bytes BlockWithComment(std::size_t size)
{
    const std::string comment = std::string("ASCII\0\0\0", 8) + std::string(size, 'x');
    return ExifBlock(false).Shorts(274, {1}).ExifDirectory().Undefined(37510, comment).Build();
}

void RegisterSizes()
{
    for (const unsigned count : {8, 24, 72, 216}) {
        const std::string name = "/tags:" + std::to_string(count);
        const Blocks blocks = {BlockWithTags(count)};
        benchmark::RegisterBenchmark(("ParseTags_Own" + name).c_str(), Parse_Own, blocks);
        benchmark::RegisterBenchmark(("ParseTags_Exiv2" + name).c_str(), Parse_Exiv2, blocks);
        benchmark::RegisterBenchmark(("OrientTags_Own" + name).c_str(), Orient_Own, blocks);
        benchmark::RegisterBenchmark(("OrientTags_Exiv2" + name).c_str(), Orient_Exiv2, blocks);
    }
    for (const std::size_t size : {900, 3600, 14400, 57600}) {
        const std::string name = "/bytes:" + std::to_string(size);
        const Blocks blocks = {BlockWithComment(size)};
        benchmark::RegisterBenchmark(("ParseComment_Own" + name).c_str(), Parse_Own, blocks);
        benchmark::RegisterBenchmark(("ParseComment_Libexif" + name).c_str(), Parse_Libexif, blocks);
    }
}

void Register(const std::string& name, const Blocks& blocks)
{
    benchmark::RegisterBenchmark(("Parse_Own/" + name).c_str(), Parse_Own, blocks);
    benchmark::RegisterBenchmark(("Parse_Libexif/" + name).c_str(), Parse_Libexif, blocks);
    benchmark::RegisterBenchmark(("Parse_Exiv2/" + name).c_str(), Parse_Exiv2, blocks);
    benchmark::RegisterBenchmark(("Orient_Own/" + name).c_str(), Orient_Own, blocks);
    benchmark::RegisterBenchmark(("Orient_Exiv2/" + name).c_str(), Orient_Exiv2, blocks);
}

/// Takes the maker note's entry out of the Exif directory.
void RemoveMakerNote(Bytes& block)
{
    constexpr std::size_t kEntry = 12;
    const bool bigEndian = block[0] == 'M';
    CExif exif;
    exif.ParseData(Stream::OverMemory(block.data(), block.size()));
    CExifTag* const pointer = exif.FindTag(34665);
    std::uint32_t at = 0;
    if (!pointer || !pointer->GetSingleValue(0, &at, sizeof at) || at + 2 > block.size())
        return;
    unsigned char& high = block[bigEndian ? at : at + 1];
    unsigned char& low = block[bigEndian ? at + 1 : at];
    const std::size_t entries = high * 256u + low;
    const std::size_t end = at + 2 + entries * kEntry;
    for (std::size_t entry = at + 2; entry < end && end <= block.size(); entry += kEntry) {
        if (block[entry] * 256u + block[entry + 1] != (bigEndian ? 0x927Cu : 0x7C92u))
            continue;
        const auto from = block.begin() + static_cast<std::ptrdiff_t>(entry);
        std::copy(from + kEntry, block.begin() + static_cast<std::ptrdiff_t>(end), from);
        high = static_cast<unsigned char>((entries - 1) / 256);
        low = static_cast<unsigned char>((entries - 1) % 256);
        return;
    }
}

/// Whether a block is sound for all three.
bool IsSound(Bytes block)
{
    CExif exif;
    short orientation = 0;
    Exiv2::ExifData data;
    try {
        const auto size = static_cast<std::uint32_t>(block.size());
        const auto order = Exiv2::ExifParser::decode(data, block.data(), size);
        data["Exif.Image.Orientation"] = std::uint16_t{1};
        Exiv2::Blob rewritten;
        Exiv2::ExifParser::encode(rewritten, block.data(), size, order, data);
        if (!rewritten.empty() || data.findKey(Exiv2::ExifKey("Exif.Photo.MakerNote")) != data.end())
            return false;
    } catch (const std::exception&) {
        return false;
    }
    return exif.ParseData(Stream::OverMemory(block.data(), block.size())) && exif.GetAt(15)
        && exif.GetOrientation(orientation);
}

Blocks RealBlocks()
{
    Blocks blocks;
    const char* const folder = std::getenv("TVL_EXIF_PHOTOS");
    if (!folder)
        return blocks;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".jpg")
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        Bytes bytes(std::istreambuf_iterator<char>(file), {});
        Stream stream = Stream::OverMemory(bytes.data(), bytes.size());
        const ExifPlace place = LocateExif(stream);
        if (place.search != ExifSearch::Found || place.offset + place.size > static_cast<long long>(bytes.size()))
            continue;
        Bytes block(bytes.begin() + place.offset, bytes.begin() + place.offset + place.size);
        RemoveMakerNote(block);
        if (IsSound(block))
            blocks.push_back(std::move(block));
    }
    return blocks;
}
}   // namespace

int main(int count, char** arguments)
{
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    benchmark::Initialize(&count, arguments);
    Register("CameraLittleEndian", {CameraBlock(false)});
    Register("CameraBigEndian", {CameraBlock(true)});
    RegisterSizes();
    if (const Blocks blocks = RealBlocks(); !blocks.empty())
        Register(std::to_string(blocks.size()) + "RealBlocks", blocks);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

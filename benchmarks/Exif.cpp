// Reading and patching Exif blocks in memory, beside libexif and exiv2 on the same blocks. No block has a maker note, which
// only the peers take apart.
#include "CExif.h"
#include "ExifBlock.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <exiv2/exiv2.hpp>
#include <filesystem>
#include <fstream>
#include <libexif/exif-data.h>
#include <map>
#include <string>

namespace {
using Bytes = ExifBlock::Bytes;
using TvlUtils::Stream;

constexpr std::string_view kLibexifPrefix("Exif\0\0", 6);   // expects the block as it stands in a JPEG file

void Parse_Own(benchmark::State& state, Bytes block)
{
    for (auto _ : state) {
        CExif exif;
        if (!exif.ParseData(Stream::OverMemory(block.data(), block.size())))
            state.SkipWithError("not read");
        benchmark::DoNotOptimize(exif.GetAt(0));
    }
}

void Parse_Libexif(benchmark::State& state, Bytes block)
{
    block.insert(block.begin(), kLibexifPrefix.begin(), kLibexifPrefix.end());
    for (auto _ : state) {
        ExifData* const data = exif_data_new_from_data(block.data(), static_cast<unsigned>(block.size()));
        benchmark::DoNotOptimize(data);
        exif_data_unref(data);
    }
}

void Parse_Exiv2(benchmark::State& state, Bytes block)
{
    for (auto _ : state) {
        Exiv2::ExifData data;
        Exiv2::ExifParser::decode(data, block.data(), static_cast<std::uint32_t>(block.size()));
        benchmark::DoNotOptimize(data.count());
    }
}

void Orient_Own(benchmark::State& state, Bytes block)
{
    int value = 0;
    for (auto _ : state) {
        CExif exif;
        if (!exif.ReplaceData(Stream::OverMemory(block.data(), block.size()), 274, value++ % 8 + 1))
            state.SkipWithError("not patched");
    }
}

/// exiv2's in-place way: the changed data is written into the block that it was read from.
void Orient_Exiv2(benchmark::State& state, Bytes block)
{
    int value = 0;
    for (auto _ : state) {
        Exiv2::ExifData data;
        const auto size = static_cast<std::uint32_t>(block.size());
        const auto order = Exiv2::ExifParser::decode(data, block.data(), size);
        data["Exif.Image.Orientation"] = static_cast<std::uint16_t>(value++ % 8 + 1);
        Exiv2::Blob blob;
        Exiv2::ExifParser::encode(blob, block.data(), size, order, data);
        if (!blob.empty())
            state.SkipWithError("not in place");
    }
}

void Register(const std::string& name, const Bytes& block)
{
    benchmark::RegisterBenchmark(("Parse_Own/" + name).c_str(), Parse_Own, block);
    benchmark::RegisterBenchmark(("Parse_Libexif/" + name).c_str(), Parse_Libexif, block);
    benchmark::RegisterBenchmark(("Parse_Exiv2/" + name).c_str(), Parse_Exiv2, block);
    CExif exif;
    short orientation = 0;
    exif.ParseData(Stream::OverMemory(block.data(), block.size()));
    if (!exif.GetOrientation(orientation))
        return;
    benchmark::RegisterBenchmark(("Orient_Own/" + name).c_str(), Orient_Own, block);
    benchmark::RegisterBenchmark(("Orient_Exiv2/" + name).c_str(), Orient_Exiv2, block);
}

/// Blocks of real photos: every file of the folder TVL_EXIF_BLOCKS, as the corpora's script leaves them.
void RegisterRealBlocks()
{
    const char* const folder = std::getenv("TVL_EXIF_BLOCKS");
    if (!folder)
        return;
    std::map<std::string, Bytes> blocks;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        blocks[entry.path().filename().string()] = Bytes(std::istreambuf_iterator<char>(file), {});
    }
    for (const auto& [name, block] : blocks)
        Register(name, block);
}
}   // namespace

int main(int count, char** arguments)
{
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    benchmark::Initialize(&count, arguments);
    Register("CameraLittleEndian", CameraBlock(false));
    Register("CameraBigEndian", CameraBlock(true));
    RegisterRealBlocks();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

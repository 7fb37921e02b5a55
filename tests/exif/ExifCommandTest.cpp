// Image files: their blocks found, shown and patched.
#include "ExifCommand.h"
#include "ExifBlock.h"
#include "ExifLocator.h"
#include "TaskView.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {
namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;
using TvlUtils::Stream;

std::string Block(bool bigEndian)
{
    const auto bytes = CameraBlock(bigEndian);
    return {bytes.begin(), bytes.end()};
}

std::string Number(std::size_t number, int width, bool bigEndian)
{
    std::string bytes;
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(number >> 8 * (bigEndian ? width - 1 - i : i));
    return bytes;
}

std::string Segment(char marker, const std::string& bytes)
{
    return "\xFF"s + marker + Number(bytes.size() + 2, 2, true) + bytes;
}

std::string Jpeg(const std::string& segments) { return "\xFF\xD8"s + segments + "\xFF\xDA\0\2data\xFF\xD9"s; }

std::string JpegWith(const std::string& block)
{
    return Jpeg(Segment('\xE0', "JFIF\0"s) + "\xFF\xFF"s + Segment('\xE1', "http://ns.adobe.com/xap/1.0/\0"s)
        + Segment('\xE1', "Exif\0\0"s + block));
}

/// Bit by bit, over what a check sum protects.
std::uint32_t Crc(const std::string& bytes)
{
    std::uint32_t crc = ~0u;
    for (const char c : bytes)
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ ((crc ^ static_cast<unsigned char>(c) >> bit) & 1) * 0xEDB88320u;
    return ~crc;
}

std::string Chunk(const std::string& type, const std::string& bytes)
{
    return Number(bytes.size(), 4, true) + type + bytes + Number(Crc(type + bytes), 4, true);
}

std::string PngWith(const std::string& block)
{
    return "\x89PNG\r\n\x1A\n"s + Chunk("IHDR", std::string(13, '\1')) + Chunk("eXIf", block) + Chunk("IEND", "");
}

std::string WebpWith(const std::string& block)
{
    const std::string chunks = "WEBPVP8 "s + Number(5, 4, false) + "abcde\0"s + "EXIF" + Number(block.size(), 4, false)
        + block + (block.size() % 2 ? "\0"s : ""s);
    return "RIFF" + Number(chunks.size(), 4, false) + chunks;
}

ExifPlace Locate(const std::string& file)
{
    Stream stream = Stream::OverMemory(static_cast<const void*>(file.data()), file.size());
    return LocateExif(stream);
}

TEST(ExifLocator, FindsTheBlockInEachFormat)
{
    for (const bool bigEndian : {false, true}) {
        const std::string block = Block(bigEndian);
        for (const std::string& file : {JpegWith(block), PngWith(block), WebpWith(block), WebpWith("Exif\0\0"s + block),
                 PngWith("Exif\0\0"s + block)}) {
            const ExifPlace place = Locate(file);
            ASSERT_EQ(place.search, ExifSearch::Found) << file.substr(0, 12);
            EXPECT_EQ(file.substr(static_cast<std::size_t>(place.offset), static_cast<std::size_t>(place.size)), block);
        }
        EXPECT_EQ(Locate(block).search, ExifSearch::Found);
        EXPECT_EQ(Locate(block).offset, 0);
    }
}

TEST(ExifLocator, TellsWhyThereIsNone)
{
    const std::string jpeg = JpegWith(Block(false));
    const std::string png = PngWith(Block(false));
    const std::string webp = WebpWith(Block(false));
    const std::pair<std::string, ExifSearch> cases[] = {
        {"", ExifSearch::UnknownFormat},
        {"just some text in a file", ExifSearch::UnknownFormat},
        {"RIFX\0\0\0\0WEBPVP8 "s, ExifSearch::UnknownFormat},
        {Jpeg(Segment('\xE1', "Exit\0\0"s)), ExifSearch::NoBlock},
        {Jpeg(Segment('\xE1', "Exif\0\0II*"s)), ExifSearch::Damaged},
        {Jpeg("\xFF\xE1\0\1"s), ExifSearch::Damaged},
        {Jpeg("\xFF\xFE\0\2abc"s), ExifSearch::Damaged},
        {jpeg.substr(0, 30), ExifSearch::Damaged},
        {"\xFF\xD8"s + std::string(1 << 20, '\xFF'), ExifSearch::Damaged},
        {"\x89PNG\r\n\x1A\n"s + Chunk("IHDR", "") + Chunk("IEND", ""), ExifSearch::NoBlock},
        {png.substr(0, 30), ExifSearch::Damaged},
        {"\x89PNG\r\n\x1A\n\xFF\xFF\xFF\xFFtEXt"s, ExifSearch::Damaged},
        {webp.substr(0, 22), ExifSearch::Damaged},
        {"RIFF\x0A\0\0\0WEBPVP8 "s, ExifSearch::NoBlock},
        {"RIFF\xFF\xFF\xFF\xFFWEBPVP8 \xFF\xFF\xFF\xFF"s, ExifSearch::Damaged},
    };
    for (const auto& [file, search] : cases)
        EXPECT_EQ(Locate(file).search, search) << &search - &cases[0].second << ": " << file.substr(0, 30);
}

/// A folder of files, gone with its object.
class ExifCommand : public testing::Test {
protected:
    ExifCommand() { fs::create_directories(folder); }
    ~ExifCommand() override { fs::remove_all(folder); }

    fs::path Put(const std::string& name, const std::string& bytes)
    {
        const fs::path path = folder / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    static std::string Get(const fs::path& path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    int Run(const ExifRequest& request)
    {
        out.str("");
        errors.str("");
        TaskView none(errors, {});
        return RunExif(request, out, errors, *TvlUtl::ITaskProgressMgr::GetInst().GetDummyTask(), none);
    }

    fs::path folder = fs::temp_directory_path() / "exif-command-test";
    std::ostringstream out;
    std::ostringstream errors;
};

TEST_F(ExifCommand, ShowsLabelsAndValues)
{
    EXPECT_EQ(Run({.paths = {Put("a.jpg", JpegWith(Block(true)))}}), 0);
    EXPECT_THAT(out.str(), HasSubstr("a.jpg\n"));
    EXPECT_THAT(out.str(), HasSubstr("\n    272  Camera model"));
    EXPECT_THAT(out.str(), HasSubstr("  33434  Exposure time                             1/250\n"));
    EXPECT_THAT(out.str(), HasSubstr("  37377  -  "));
    EXPECT_EQ(errors.str(), "");
}

TEST_F(ExifCommand, WritesNoControlCharacters)
{
    const auto block = ExifBlock(false).Text(270, "a\x1B[2Jb\x7F\nc").Build();
    EXPECT_EQ(Run({.paths = {Put("a.tif", {block.begin(), block.end()})}}), 0);
    EXPECT_THAT(out.str(), HasSubstr("a\\x1b[2Jb\\x7f\\x0ac\n"));
}

TEST_F(ExifCommand, GivesEveryFileAsJson)
{
    const auto odd = ExifBlock(true)
                         .Raw(270, 2, 4, "\xFF\xFEx?")
                         .Undefined(700, "\1\xAB")
                         .Rationals(37380, {0xFFFFFFFF, 2}, 10)
                         .Shorts(258, {1, 2})
                         .Build();
    const ExifRequest request{.paths = {Put("a.webp", WebpWith(Block(false))), Put("b.tif", {odd.begin(), odd.end()}),
                                  Put("c.txt", "no image")},
        .json = true};
    EXPECT_EQ(Run(request), 2);
    const auto files = nlohmann::json::parse(out.str());
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0]["tags"].size(), 51u);
    EXPECT_EQ(files[0]["tags"][2],
        nlohmann::json({{"id", 272}, {"type", 2}, {"count", 22}, {"label", "Camera model"},
            {"text", "Northlight Meridian 5"}, {"value", "Northlight Meridian 5"}}));
    const auto& tags = files[1]["tags"];
    EXPECT_EQ(tags[1]["value"], "01ab");
    EXPECT_EQ(tags[2]["value"], nlohmann::json({{-1, 2}}));
    EXPECT_EQ(tags[3]["value"], nlohmann::json({1, 2}));
    EXPECT_EQ(files[2]["tags"].size(), 0u);
    EXPECT_EQ(files[2]["error"], "not a JPEG, TIFF, PNG or WebP file");

    EXPECT_EQ(Run({.paths = {}, .json = true}), 0);
    EXPECT_EQ(nlohmann::json::parse(out.str()), nlohmann::json::array());
}

TEST_F(ExifCommand, NamesEachBadFileOnceAndGoesOn)
{
    const auto cut = Block(false).substr(0, 100);
    const ExifRequest request{
        .paths = {folder / "missing.jpg", Put("text.jpg", "no image at all"), folder, Put("cut.tif", cut),
            Put("good.jpg", JpegWith(Block(false))), Put("plain.jpg", Jpeg(""))}};
    EXPECT_EQ(Run(request), 2);
    const std::string lines = errors.str();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 4);
    EXPECT_THAT(lines, HasSubstr("missing.jpg: can't be opened\n"));
    EXPECT_THAT(lines, HasSubstr("text.jpg: not a JPEG"));
    EXPECT_THAT(lines, HasSubstr(": a folder: add --recursive"));
    EXPECT_THAT(lines, HasSubstr("cut.tif: damaged Exif block\n"));
    EXPECT_THAT(out.str(), HasSubstr("Northlight Meridian 5"));
    EXPECT_THAT(out.str(), HasSubstr("plain.jpg: no Exif block\n"));
}

TEST_F(ExifCommand, ReadsFoldersInOrderOnAnyNumberOfThreads)
{
    for (int i = 0; i < 60; ++i)
        Put("album/" + std::to_string(i % 7) + "/" + std::to_string(i) + ".jpg", JpegWith(Block(i % 2 == 0)));
    Put("album/notes.txt", "of no interest");
    Put("album/cut.png", "\x89PNG\r\n\x1A\n\0\0\0\0"s);
    ExifRequest request{.paths = {folder}, .json = true, .recursive = true, .threads = 1};
    EXPECT_EQ(Run(request), 2);
    const std::string alone = out.str();
    EXPECT_EQ(nlohmann::json::parse(alone).size(), 61u);
    EXPECT_EQ(errors.str(), (folder / "album" / "cut.png").string() + ": damaged before its Exif block\n");

    request.threads = 8;
    EXPECT_EQ(Run(request), 2);
    EXPECT_EQ(out.str(), alone);
}

TEST_F(ExifCommand, LeavesFilesAloneOnceItIsCancelled)
{
    const std::string bytes = JpegWith(Block(true));
    TvlUtl::ITaskProgress* const task = TvlUtl::ITaskProgressMgr::GetInst().CreateDetachedTask(L"cancelled");
    task->Cancel();
    TaskView none(errors, {});
    EXPECT_EQ(RunExif({.paths = {Put("a.jpg", bytes)}, .orientation = 3}, out, errors, *task, none), 130);
    EXPECT_EQ(Get(folder / "a.jpg"), bytes);
    EXPECT_EQ(out.str() + errors.str(), "");
    task->Finish();
}

TEST_F(ExifCommand, SetsTheOrientationAndTouchesNoOtherByte)
{
    for (const bool bigEndian : {false, true}) {
        const std::string block = Block(bigEndian);
        std::string turned = block;
        // The fourth entry of the first directory.
        turned[8 + 2 + 3 * 12 + 8 + (bigEndian ? 1 : 0)] = 3;
        const std::tuple<const char*, std::string, std::string> files[] = {
            {"a.jpg", JpegWith(block), JpegWith(turned)}, {"a.tif", block, turned},
            {"a.webp", WebpWith(block), WebpWith(turned)},
            {"a.png", PngWith(block), PngWith(turned)},   // with the check sum that fits
        };
        for (const auto& [name, before, after] : files) {
            const fs::path path = Put(name, before);
            EXPECT_EQ(Run({.paths = {path}, .orientation = 3}), 0) << errors.str();
            EXPECT_TRUE(Get(path) == after) << name;
            EXPECT_EQ(out.str(), "");
        }
    }
}

// Some scanners write an orientation of 0.
TEST_F(ExifCommand, SetsAnOrientationOutOfRange)
{
    const auto before = ExifBlock(true).Shorts(274, {0}).Build();
    const auto after = ExifBlock(true).Shorts(274, {8}).Build();
    const fs::path path = Put("a.tif", {before.begin(), before.end()});
    EXPECT_EQ(Run({.paths = {path}, .orientation = 8}), 0) << errors.str();
    EXPECT_EQ(Get(path), std::string(after.begin(), after.end()));
}

TEST_F(ExifCommand, LeavesFilesAloneWhoseOrientationCannotBeSet)
{
    const auto bytes = [](const ExifBlock& block) {
        const auto built = block.Build();
        return std::string(built.begin(), built.end());
    };
    const std::string files[] = {
        bytes(ExifBlock(false).Shorts(275, {1})),
        bytes(ExifBlock(false).Rationals(274, {1, 1})),
        bytes(ExifBlock(false).Shorts(274, {1, 1})),
        bytes(ExifBlock(false).Shorts(274, {1})).substr(0, 20),
        Jpeg(""),
        "no image at all",
    };
    for (const std::string& before : files) {
        const fs::path path = Put("a.tif", before);
        EXPECT_EQ(Run({.paths = {path}, .orientation = 3}), 2) << &before - files;
        EXPECT_TRUE(Get(path) == before) << &before - files;
    }
    const fs::path path = Put("a.jpg", JpegWith(Block(false)));
    fs::permissions(path, fs::perms::owner_read);
    fs::last_write_time(path, fs::file_time_type{});
    const auto time = fs::last_write_time(path);
    EXPECT_EQ(Run({.paths = {path}}), 0) << "read-only is enough for reading";
    EXPECT_EQ(fs::last_write_time(path), time);
    fs::permissions(path, fs::perms::owner_all);
}

}   // namespace

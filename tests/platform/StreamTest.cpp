// Streams over memory and over files: both hold the same contract.
#include "siblings/TvlUtils/Stream.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace {
using TvlUtils::SeekOrigin;
using TvlUtils::Stream;
using TvlUtils::StreamAccess;

/// A file that ends with its object.
struct ScratchFile {
    explicit ScratchFile(const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }
    ~ScratchFile() { std::filesystem::remove(path); }
    std::string Bytes() const
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::filesystem::path path = std::filesystem::temp_directory_path()
        / ("stream-test-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
};

/// Expects a stream over "0123456789" that can be written, and leaves "01ab456789".
void ExpectContract(Stream stream)
{
    std::array<char, 11> bytes{};
    EXPECT_TRUE(stream);
    EXPECT_TRUE(stream.Read(bytes.data(), 4));
    EXPECT_EQ(std::string(bytes.data(), 4), "0123");

    Stream copy = stream;
    EXPECT_TRUE(copy.Seek(2, SeekOrigin::Current));
    EXPECT_EQ(stream.GetPosition(), 6) << "copies share the position";
    EXPECT_FALSE(stream.Seek(-7, SeekOrigin::Current));
    EXPECT_FALSE(stream.Seek(-1, SeekOrigin::Start));
    EXPECT_FALSE(stream.Seek(std::numeric_limits<long long>::max(), SeekOrigin::Current));
    EXPECT_FALSE(stream.Seek(std::numeric_limits<long long>::min(), SeekOrigin::Current));
    EXPECT_FALSE(stream.Read(bytes.data(), 5)) << "one byte more than there is";
    EXPECT_FALSE(stream.Write("abcde", 5)) << "the size is fixed";
    EXPECT_EQ(stream.GetPosition(), 6);
    EXPECT_TRUE(stream.Read(bytes.data(), 4));
    EXPECT_TRUE(stream.Read(nullptr, 0));

    EXPECT_TRUE(stream.Seek(1'000'000'000'000, SeekOrigin::Start));
    EXPECT_FALSE(stream.Read(bytes.data(), 1));
    EXPECT_TRUE(stream.Seek(2, SeekOrigin::Start));
    EXPECT_TRUE(stream.Write("ab", 2));
    EXPECT_TRUE(stream.Read(bytes.data(), 1)) << "a read may follow a write";
    EXPECT_EQ(bytes[0], '4');
}

TEST(Stream, ReadsAndWritesMemory)
{
    std::string bytes = "0123456789";
    ExpectContract(Stream::OverMemory(bytes.data(), bytes.size()));
    EXPECT_EQ(bytes, "01ab456789");
}

TEST(Stream, ReadsAndWritesFiles)
{
    const ScratchFile file("0123456789");
    ExpectContract(Stream::OpenFile(file.path.wstring(), StreamAccess::ReadWrite));
    EXPECT_EQ(file.Bytes(), "01ab456789");
}

TEST(Stream, StaysInItsRangeOfAFile)
{
    const ScratchFile file("<<<0123456789>>>");
    ExpectContract(Stream::OpenFile(file.path.wstring(), StreamAccess::ReadWrite, 3, 10));
    EXPECT_EQ(file.Bytes(), "<<<01ab456789>>>");
}

TEST(Stream, RefusesToWriteWhatIsOnlyRead)
{
    const std::string bytes = "0123";
    const ScratchFile file(bytes);
    EXPECT_FALSE(Stream::OverMemory(static_cast<const void*>(bytes.data()), 4).Write("x", 1));
    EXPECT_FALSE(Stream::OpenFile(file.path.wstring(), StreamAccess::Read).Write("x", 1));
    EXPECT_EQ(file.Bytes(), bytes);
}

TEST(Stream, ReadsWhatThereIs)
{
    const ScratchFile file("0123456789");
    for (const std::size_t size : {0, 1, 3, 7, 9, 10, 11, 64}) {
        Stream stream = Stream::OpenFile(file.path.wstring(), StreamAccess::Read);
        std::string bytes(64, '\0');
        bytes.resize(stream.ReadSome(bytes.data(), size));
        EXPECT_EQ(bytes, std::string("0123456789").substr(0, size));
        EXPECT_EQ(stream.GetPosition(), static_cast<long long>(bytes.size()));
    }
    EXPECT_EQ(Stream().ReadSome(nullptr, 1), 0u);
}

TEST(Stream, HasNoSourceWhenAFileCannotServe)
{
    const ScratchFile file("0123");
    EXPECT_FALSE(Stream::OpenFile(file.path.wstring(), StreamAccess::Read, 5));
    EXPECT_FALSE(Stream::OpenFile(file.path.wstring(), StreamAccess::Read, -1));
    EXPECT_FALSE(Stream::OpenFile(file.path.wstring() + L".none", StreamAccess::ReadWrite));
    EXPECT_FALSE(Stream::OpenFile(file.path.parent_path().wstring(), StreamAccess::Read)) << "a folder";
    EXPECT_FALSE(Stream().Read(nullptr, 0));
    EXPECT_FALSE(Stream().Seek(0, SeekOrigin::Start));
}

}   // namespace

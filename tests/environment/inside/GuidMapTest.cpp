// "guidmap.dat": good ones are searched, all others pair nothing.
#include "GuidMap.h"
#include "CGUIDMap.h"
#include "FakeEnvironment.h"
#include "MemoryFiles.h"
#include "windows/Modules.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace {
using TvlUtils::SystemIO::OpenMode;

bool Same(const GUID& a, const GUID& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

/// An identifier that differs from others in the given place: what stands first counts last.
GUID Guid(unsigned first, unsigned second = 0, unsigned third = 0, int byte = 0, unsigned value = 0)
{
    GUID guid{first, static_cast<std::uint16_t>(second), static_cast<std::uint16_t>(third), {}};
    guid.Data4[byte] = static_cast<std::uint8_t>(value);
    return guid;
}

// In the order of the file.
const GUID kOrdered[] = {
    Guid(0),
    Guid(1),
    Guid(0xFFFFFFFF),
    Guid(0, 1),
    Guid(0, 0xFFFF),
    Guid(0, 0, 1),
    Guid(9, 9, 0xFFFF),
    Guid(0, 0, 0, 0, 1),
    Guid(0, 0, 0, 0, 255),
    Guid(0, 0, 0, 1, 1),
    Guid(0, 0, 0, 6, 255),
    Guid(0, 0, 0, 7, 1),
    Guid(0, 0, 0, 7, 255),
};

TEST(GuidOrder, BeginsAtTheEndOfIdentifiers)
{
    for (std::size_t i = 0; i < std::size(kOrdered); ++i)
        for (std::size_t j = 0; j < std::size(kOrdered); ++j)
            EXPECT_EQ(CompareGuids(kOrdered[i], kOrdered[j]), i <=> j) << i << " " << j;
}

/// Makes this process a unit test's, whose program lies in a folder that no disk has.
class UnitTestHost final : public Ports::Modules {
public:
    UnitTestHost() : m_system(Get()) { SetForTests(this); }
    UnitTestHost(const UnitTestHost&) = delete;
    UnitTestHost& operator=(const UnitTestHost&) = delete;
    ~UnitTestHost() override { SetForTests(nullptr); }

    HMODULE Loaded(const std::wstring& name) const override
    {
        return name == L"UnitTestMarker.dll" ? reinterpret_cast<HMODULE>(&m_system) : m_system.Loaded(name);
    }
    HMODULE Load(const std::wstring& path) override { return m_system.Load(path); }
    HMODULE LoadFromSystem(const std::wstring& name) override { return m_system.LoadFromSystem(name); }
    HMODULE LoadFromProgramFolder(const std::wstring& name) override { return m_system.LoadFromProgramFolder(name); }
    void Unload(HMODULE module) override { m_system.Unload(module); }
    void* Address(HMODULE module, const std::string& name) const override { return m_system.Address(module, name); }
    std::wstring ProgramPath() const override { return L"/program/test"; }
    std::vector<std::wstring> Arguments() const override { return m_system.Arguments(); }
    std::wstring PathOf(const void* address) const override { return m_system.PathOf(address); }

private:
    Ports::Modules& m_system;
};

// For the whole program, because the library asks once.
const UnitTestHost unitTestHost;

std::string Number(std::uint32_t number) { return std::string(reinterpret_cast<const char*>(&number), sizeof number); }

std::string File(std::uint32_t count, std::uint32_t engines, std::uint32_t applications, std::size_t tableBytes)
{
    return Number(count) + Number(engines) + Number(applications) + std::string(tableBytes, 'x');
}

class GuidMap : public testing::Test {
protected:
    bool Load(CGUIDMap& map, const std::string& bytes)
    {
        files.Put("guidmap.dat", bytes);
        std::unique_ptr<TvlUtils::SystemIO::FileHandle> handle;
        EXPECT_TRUE(files.Open("guidmap.dat", OpenMode::Read, handle));
        return map.Load(*handle, static_cast<long long>(bytes.size()));
    }

    MemoryFiles files;
};

TEST_F(GuidMap, FindsEachPartnerBothWays)
{
    std::vector<TvlUtl::GuidPair> pairs;
    for (unsigned i = 0; i < 1200; ++i)   // more than are read at once
        pairs.push_back({Guid(i * 2654435761u, i % 7), Guid(i, 3, 1)});
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{511}, pairs.size()}) {
        const std::vector<TvlUtl::GuidPair> some(pairs.begin(), pairs.begin() + static_cast<std::ptrdiff_t>(count));
        CGUIDMap map;
        ASSERT_TRUE(Load(map, TvlUtl::MakeGuidMap(some)));
        for (const auto& [engine, application] : some) {
            const GUID* const found = map.FindApplication(engine);
            const GUID* const back = map.FindEngine(application);
            ASSERT_TRUE(found && Same(*found, application));
            ASSERT_TRUE(back && Same(*back, engine));
        }
        EXPECT_EQ(map.FindApplication(Guid(5, 6, 7)), nullptr);
        EXPECT_EQ(map.FindEngine(Guid(0, 0xFFFF, 0xFFFF, 7, 255)), nullptr);
    }
}

TEST_F(GuidMap, RefusesTablesThatAreNotWholeInTheFile)
{
    constexpr std::uint32_t kMinus = 0x80000000;
    struct Row {
        const char* what;
        std::string bytes;
        bool loads;
    };
    const Row rows[] = {
        {"empty", "", false},
        {"short count", std::string(3, '\0'), false},
        {"short header", std::string(11, '\0'), false},
        {"no pairs", File(0, 12, 12, 0), true},
        {"no pairs, offset beyond", File(0, 12, 13, 0), false},
        {"one pair", File(1, 12, 44, 64), true},
        {"one table for both", File(1, 12, 12, 32), true},
        {"one byte short", File(1, 12, 44, 63), false},
        {"engines beyond", File(1, 45, 12, 64), false},
        {"applications at the end", File(1, 12, 76, 64), false},
        {"offset with the highest bit", File(1, kMinus, 12, 64), false},
        {"greatest offset", File(1, 12, 0xFFFFFFFF, 64), false},
        {"count -1", File(0xFFFFFFFF, 12, 44, 64), false},
        {"least count", File(kMinus, 12, 44, 64), false},
        {"greatest count", File(0x7FFFFFFF, 12, 44, 64), false},
        {"bytes that wrap in 32 bits", File(0x08000001, 12, 44, 64), false},
        {"bytes behind the tables", File(1, 12, 44, 70), true},
    };
    CGUIDMap map;
    for (const auto& [what, bytes, loads] : rows) {
        EXPECT_EQ(Load(map, bytes), loads) << what;
        EXPECT_EQ(map.IsLoaded(), loads) << what;
        EXPECT_EQ(map.FindApplication(Guid(1)), nullptr) << what;
        EXPECT_EQ(map.FindEngine(Guid(1)), nullptr) << what;
    }
}

TEST_F(GuidMap, ComesFromTheSuiteOrInAUnitTestFromTheTestsOwnData)
{
    const FakeEnvironment environment(std::map<std::wstring, std::wstring>{{L"TVL_SUITE_DIR", L"/suite"}});
    const GUID key = Guid(1);
    EXPECT_FALSE(CGUIDMap().IsLoaded());
    files.Put("/program/TestData/guidmap.dat", TvlUtl::MakeGuidMap({{key, Guid(2)}}));
    const CGUIDMap own;
    ASSERT_NE(own.FindApplication(key), nullptr);
    EXPECT_TRUE(Same(*own.FindApplication(key), Guid(2)));
    files.Put("/suite/Data/guidmap.dat", TvlUtl::MakeGuidMap({{key, Guid(3)}}));
    const CGUIDMap suites;
    ASSERT_NE(suites.FindApplication(key), nullptr);
    EXPECT_TRUE(Same(*suites.FindApplication(key), Guid(3)));
    files.Put("/suite/Data/guidmap.dat", "not whole");
    EXPECT_FALSE(CGUIDMap().IsLoaded());
}

TEST_F(GuidMap, PairsNothingWhenAReadFails)
{
    const std::string bytes = TvlUtl::MakeGuidMap({{Guid(1), Guid(2)}, {Guid(3), Guid(4)}});
    CGUIDMap map;
    ASSERT_TRUE(Load(map, bytes));
    files.Put("guidmap.dat", bytes);
    WalkFaultPoints(4, [&](std::size_t point) {   // to open, and three reads
        files.Inject(point, MemoryFiles::Fault::Fail);
        std::unique_ptr<TvlUtils::SystemIO::FileHandle> handle;
        const bool loaded = files.Open("guidmap.dat", OpenMode::Read, handle)
            && map.Load(*handle, static_cast<long long>(bytes.size()));
        const bool reached = files.FaultReached();
        EXPECT_NE(loaded, reached);
        EXPECT_EQ(map.FindApplication(Guid(1)) != nullptr, loaded || point == 1);
        files.Restart();
        return reached;
    });
}

}   // namespace

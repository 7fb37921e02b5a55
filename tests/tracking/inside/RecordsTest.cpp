// Records from the inside: their layout, the table, and a heap that fails.
#include "FailingHeap.h"
#include "RecordTable.h"
#include "siblings/TvlComponent/Application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {
using Use = TrackFileFormatUse;

struct Application : ITovelCmn_App {
    Application() { TvlComponent::SetAppInterface(this); }
    ~Application() override { TvlComponent::SetAppInterface(nullptr); }
    void ShowMessage(const wchar_t*) override { }
    int TrackFeature(const wchar_t*) override { return ++labels; }

    int labels = 0;
};

/// Offsets of the fields in a record.
struct Layout : TrackFileFormatUseData {
    Layout() : TrackFileFormatUseData(false, L"", L"") { }

    std::vector<std::size_t> Offsets() const
    {
        const auto at = [this](const auto& field) {
            return static_cast<std::size_t>(
                reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(this));
        };
        return {at(m_global), at(m_context), at(m_type), at(m_filter), at(m_version), at(m_layout), at(m_saveAs),
            at(m_exportedLocation), at(m_exportedRange), at(m_autoSaveFilePath), at(m_exportFileResolution),
            at(m_errorMessage), at(m_cloud), at(m_accepted), at(m_durationRunning), at(m_durationStart),
            at(m_durationTotal), at(m_durationMarkers), at(m_statistics)};
    }
};

TEST(Records, KeepTheOrderOfTheirFields)
{
    const std::vector<std::size_t> offsets = Layout().Offsets();
    EXPECT_EQ(offsets.front(), 0u) << "no table of virtual operations";
    EXPECT_TRUE(std::is_sorted(offsets.begin(), offsets.end()));
    EXPECT_EQ(sizeof(Use), sizeof(std::shared_ptr<int>));
    EXPECT_EQ(sizeof(TrackFileFormatUseWeak), sizeof(std::weak_ptr<int>));
    EXPECT_EQ(sizeof(TrackFileFormatUseDataLock), sizeof(std::shared_ptr<int>));
}

TEST(Records, HashMarkersByTheirBytes)
{
    // FNV-1a of four bytes, from its authors' reference.
    struct Row {
        unsigned marker;
        unsigned long long hash;
    };
    const auto reference = [](unsigned marker) {
        unsigned long long hash = 14695981039346656037u;
        for (const unsigned byte : {marker & 255, marker >> 8 & 255, marker >> 16 & 255, marker >> 24})
            hash = (hash ^ byte) * 1099511628211u;
        return hash;
    };
    EXPECT_EQ(reference(0), 0x4d25767f9dce13f5u);
    for (const unsigned marker : {0u, 1u, 0x01020304u, 0xffffffffu})
        EXPECT_EQ(
            std::hash<TrackFileFormatUseDurationMarker>()(TrackFileFormatUseDurationMarker(marker)), reference(marker));
}

TEST(Records, LeaveTheTableWithTheNextStart)
{
    RecordTable& table = RecordTable::Get();
    Use::StartGlobal(L"first", L"Import");   // sweeps what other tests have left
    std::vector<Use> kept;
    for (int i = 0; i < 50; ++i) {
        kept.push_back(Use::StartGlobal(std::to_wstring(i), L"Import"));
        Use::StartGlobal(L"gone " + std::to_wstring(i), L"Import");
    }
    EXPECT_EQ(table.CountEntries(), 51u) << "of the ended ones the last alone is left";
    kept.resize(20);
    EXPECT_EQ(table.CountEntries(), 51u);
    EXPECT_FALSE(Use::Find(L"30"));
    const Use again = Use::StartGlobal(L"30", L"Import");
    EXPECT_EQ(table.CountEntries(), 21u);
    EXPECT_TRUE(Use::Find(L"19") && Use::Find(L"30") && !Use::Find(L"31"));
}

TEST(Records, AFailedStartLeavesNothing)
{
    Application application;
    const TvlString path(L'p', 100);
    const TvlString context(L'c', 100);
    Use use;
    FailEachAllocation(
        3,
        [&] {
            try {
                use = Use::StartGlobal(path + L".tvr", context);
            } catch (const std::bad_alloc&) {
                // Told by the heap that fails.
            }
        },
        [&](bool failed) {
            EXPECT_EQ(!use, failed);
            EXPECT_EQ(application.labels, 0);
            std::thread([&] { EXPECT_EQ(!Use::Find(path + L".tvr"), failed); }).join();
            use.Discard();
        });
}

TEST(Records, ADroppedHandleSurvivesAFullHeap)
{
    Application application;
    int told = 0;
    FailEachAllocation(
        5,
        [] {
            Use use;
            try {
                use = Use::StartGlobal(TvlString(L'p', 100) + L".tvr", L"Import");
            } catch (const std::bad_alloc&) {
                return;
            }
            use = Use();
        },
        [&](bool failed) {
            if (!failed)
                told = application.labels;
            EXPECT_FALSE(Use::Find(TvlString(L'p', 100) + L".tvr"));
            const Use next = Use::StartGlobal(L"next", L"Import");
            EXPECT_EQ(RecordTable::Get().CountEntries(), 1u);
        });
    EXPECT_GT(told, 0);
}

}   // namespace

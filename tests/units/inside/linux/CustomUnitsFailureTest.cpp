// Custom units without memory.
#include "FailingHeap.h"
#include "TemporaryUserFolder.h"
#include "Units.h"
#include "windows/Debug.h"

#include <gtest/gtest.h>

namespace {

/// Looks for the report of lost units among the texts for a debugger as long as it lives.
class DebugTexts : public Ports::Debug {
public:
    DebugTexts() { SetForTests(this); }
    ~DebugTexts() override { SetForTests(nullptr); }

    void Output(const std::wstring& text) override
    {
        areUnitsLost = areUnitsLost || text == L"_ENGDEBUG : UNIT : memory allocation failed for custom unit data!";
    }

    bool areUnitsLost = false;
};

/// Ids of custom units; -1 without an array.
int CountCustomIds()
{
    const int* const ids = UNITGetUnitArray(kUnitArrayAll);
    if (!ids)
        return -1;
    int count = 0;
    for (const int* id = ids; *id != -1; ++id)
        count += *id >= 42;
    return count;
}

TEST(CustomUnitsFailure, LeavesNoUnitsOrNoArray)
{
    const std::string file = "TvlCustomUnits 1\na,b,c,d,2.000000,2,0.000000,0.000000,0.000000,0\n";
    TemporaryUserFolder folder;
    folder.Write("CustomUnits.txt", file);
    DebugTexts debug;
    bool metRecords = false;   // allocations that failed
    bool metIds = false;
    int result = 0;
    FailEachAllocation(
        2, [&] { result = UNITCustomInitialize(); },
        [&](bool failed) {
            const int ids = CountCustomIds();
            if (debug.areUnitsLost) {
                // Without room for the units there are none, and the array has the built-in ones.
                EXPECT_EQ(result, 1);
                EXPECT_EQ(ids, 0);
                EXPECT_EQ(UNITConvertUnitToBase(42, 0.0, 1.0), 0.0);
                metRecords = true;
            } else if (result == 0) {
                EXPECT_EQ(ids, -1);
                metIds = metIds || UNITConvertUnitToBase(42, 0.0, 1.0) == 20000.0;
            } else if (!failed) {
                EXPECT_EQ(ids, 1);
            }
            debug.areUnitsLost = false;
            // The client is counted whatever came of it, and its end leaves the file as it was.
            EXPECT_EQ(UNITCustomUnInitialize(), 1);
            EXPECT_EQ(UNITGetUnitArray(kUnitArrayAll), nullptr);
            EXPECT_EQ(folder.Read("CustomUnits.txt"), file);
        });
    EXPECT_TRUE(metRecords);
    EXPECT_TRUE(metIds);
}

}   // namespace

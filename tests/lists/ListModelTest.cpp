// Long random sequences on lists and their models.
#include "FakeWindowing.h"
#include "ListOperations.h"
#include "RandomChoices.h"
#include "SlotOperations.h"

#include <gtest/gtest.h>

namespace {

using namespace ListTrials;

constexpr LONG kLongest = 60;   // elements; longer lists only take longer
constexpr int kSteps = 10000;
constexpr ULONG kHeaders[] = {12, 13, 40};   // 13 leaves the offset table without alignment

/// How many kinds of operations to choose from: now and then those alone that add.
unsigned Kinds(int step, std::size_t all) { return step % 400 < 40 ? kAddingKinds : static_cast<unsigned>(all); }

TEST(ListModel, HoldsOverRandomOperations)
{
    FakeWindowing windowing;
    for (const ULONG header : kHeaders) {
        RandomChoices choices(header);
        HMEM__* handle = LIST_CtorExt(header);
        ListModel model(header);
        for (int step = 0; step < kSteps; ++step) {
            ASSERT_EQ(Step(handle, model, Choose(choices, Kinds(step, std::size(kListRows)), model.Count())), "")
                << "step " << step;
            if (step % 500 == 0) {
                HMEM__* const copy = LIST_DupCtor(handle);
                LIST_Dtor(handle);
                handle = copy;
                ASSERT_EQ(Difference(handle, model), "");
            }
            while (model.Count() > kLongest)
                ASSERT_EQ(Step(handle, model, {kListPopOldest, 0, {}}), "");
            windowing.boxes.clear();
        }
        LIST_Dtor(handle);
    }
}

TEST(SlotModel, HoldsOverRandomOperations)
{
    for (const unsigned seed : {1u, 2u, 3u}) {
        RandomChoices choices(seed);
        OpenList list;
        SlotModel model;
        int longest = 0;
        for (int step = 0; step < kSteps; ++step) {
            ASSERT_EQ(Step(list, model, Choose(choices, Kinds(step, std::size(kSlotRows)), model.Count())), "")
                << "step " << step;
            longest = std::max(longest, model.Count());
        }
        EXPECT_GT(longest, 24) << "never beyond the first slots";
    }
}

}   // namespace

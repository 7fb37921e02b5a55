// What bound controls see of tasks.
#include "EndOfTask.h"
#include "siblings/DataBinding/DataSourceImpl.h"
#include "siblings/DataBinding/IDataSourceRegistrar.h"

#include <gmock/gmock.h>

namespace {
using namespace TvlUtl;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr wchar_t kSource[] = L"TvlUtl::TaskProgressMgrDS";

struct TaskData : testing::Test {
    bool InProgress() const { return std::get<bool>(source->GetProperty(L"InProgress")); }
    double Progress() const { return std::get<double>(source->GetProperty(L"Progress")); }

    IDataSourceFactory* factory = IDataSourceRegistrar::GetInstance().FindFactory(kSource);
    std::shared_ptr<IDataSourceBase> source = factory->GetSource();
};

TEST_F(TaskData, DeclaresReadOnlyProperties)
{
    EXPECT_THAT(source->GetPropertyNames(), ElementsAre(L"InProgress", L"Progress", L"TaskDisplayName"));
    for (const wchar_t* name : {L"InProgress", L"Progress", L"TaskDisplayName"}) {
        EXPECT_TRUE(source->HasAccessor(TvlString(L"get_") + name));
        EXPECT_FALSE(source->HasAccessor(TvlString(L"put_") + name));
        EXPECT_FALSE(source->PutProperty(name, true));
    }
    EXPECT_EQ(source->GetProperty(L"TaskDisplayName"), DataSourceValue(TvlString(L"Running tasks")));
}

TEST_F(TaskData, ReadsTheMainTasksAlone)
{
    EXPECT_FALSE(InProgress());
    EXPECT_EQ(Progress(), 0.0);
    OwnedTask other = MakeTask(0, 1);
    EXPECT_FALSE(InProgress());
    OwnedTask main = MakeTask(0, eTaskMain);
    EXPECT_TRUE(InProgress());
    main->SetProgress(50, nullptr);
    EXPECT_DOUBLE_EQ(Progress(), 0.5);
    MakeTask(0, eTaskMain);
    EXPECT_DOUBLE_EQ(Progress(), 0.75);
    other.reset();
    main.reset();
    EXPECT_FALSE(InProgress());
    EXPECT_EQ(Progress(), 0.0);
}

TEST_F(TaskData, TellsOfChangesOfMainTasks)
{
    std::vector<TvlString> told;
    const auto kept = source->GetChangedEvent().Subscribe(
        [&](void* sender) { told.push_back(static_cast<const IDataSourceBase::Change*>(sender)->property); });
    const auto take = [&] { return std::exchange(told, {}); };
    for (const int type : {1, 2})
        MakeTask(0, type)->Cancel();
    EXPECT_THAT(take(), IsEmpty());
    OwnedTask main = MakeTask(0, eTaskMain);
    EXPECT_THAT(take(), ElementsAre(L"InProgress"));
    main->AddProgress(1);
    EXPECT_THAT(take(), ElementsAre(L"Progress"));
    main->Cancel();
    EXPECT_THAT(take(), ElementsAre(L"Progress"));
    main->SetError(L"broken");
    EXPECT_THAT(take(), IsEmpty());
    main.reset();
    EXPECT_THAT(take(), ElementsAre(L"Progress", L"InProgress"));
    const OwnedTask detached(ITaskProgressMgr::GetInst().CreateDetachedTask(L"detached"));
    EXPECT_THAT(take(), IsEmpty());
}

TEST_F(TaskData, IsNotToldOnceItIsGone)
{
    source.reset();
    EXPECT_EQ(factory->GetLiveSource(), nullptr);
    EXPECT_FALSE(DataSourceImpl::AnyLives());
    MakeTask(0, eTaskMain)->AddProgress(1);
    EXPECT_EQ(factory->GetLiveSource(), nullptr) << "none is made for it";
}

}   // namespace

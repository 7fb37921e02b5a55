#include "TaskProgressMgrDS.h"

#include "TaskProgressMgr.h"
#include "siblings/DataBinding/DataSourceFactory.h"
#include "siblings/TvlResources/Resources.h"

namespace TvlUtl {

namespace {
constexpr wchar_t kTaskDisplayNameProperty[] = L"TaskDisplayName";
constexpr wchar_t kTaskDisplayNameKey[] = L"6f171d24-6af3-4286-bf18-514ee23f6f69";

DataSourceFactory<TaskProgressMgrDS> factory;
}   // namespace

TaskProgressMgrDS::TaskProgressMgrDS()
{
    CallOnPostConstruct(TvlUtils::Delegate<void()>::To<&TaskProgressMgrDS::DeclareProperties>(this));
}

void TaskProgressMgrDS::DeclareProperties()
{
    const auto inProgress = [] {
        return TaskProgressMgr::GetInstance().GetDefaultGroupTaskCount(eTaskMain, eTaskStateAny) > 0;
    };
    const auto progress = [] { return TaskProgressMgr::GetInstance().GetGroupProgress(0, eTaskMain); };
    const auto displayName = [] { return Framework::Resources::GetString(kTaskDisplayNameKey); };
    DeclareProperty(kInProgressProperty, inProgress, {});
    DeclareProperty(kProgressProperty, progress, {});
    DeclareProperty(kTaskDisplayNameProperty, displayName, {});
}

void NotifyTaskDataChanged(const wchar_t* propertyName)
{
    // Tasks report often, and mostly nobody is bound: this spares the look into the register.
    if (!DataSourceImpl::AnyLives())
        return;
    IDataSourceFactory* const found = IDataSourceRegistrar::GetInstance().FindFactory(factory.GetName());
    if (const auto source = found ? found->GetLiveSource() : nullptr)
        source->NotifyPropertyChanged(propertyName);
}

}   // namespace TvlUtl

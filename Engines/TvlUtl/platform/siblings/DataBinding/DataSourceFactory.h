// The factory of a data source, for a static object of the source's module.
#pragma once

#include "siblings/DataBinding/IDataSourceRegistrar.h"
#include "siblings/TvlUtils/ThreadLock.h"

#include <typeinfo>

/// The name of a class with its namespaces, the same on every target: "TvlUtl::TaskProgressMgrDS".
TVLSIBLINGS_API TvlString DataSourceName(const std::type_info& type);

/// Registers the source of a class under the class's name as long as the object lives. `Source` derives from
/// PartialDataSource and is made without arguments.
template <class Source>
class DataSourceFactory final : public IDataSourceFactory {
public:
    /// Adds the factory to the register.
    DataSourceFactory() { IDataSourceRegistrar::GetInstance().AddFactory(*this); }
    ~DataSourceFactory() { IDataSourceRegistrar::GetInstance().RemoveFactory(*this); }
    DataSourceFactory(const DataSourceFactory&) = delete;
    DataSourceFactory& operator=(const DataSourceFactory&) = delete;

    /// DataSourceName of the source's class.
    const TvlString& GetName() const override { return m_name; }
    std::shared_ptr<IDataSourceBase> GetLiveSource() const override
    {
        const TvlUtils::ReadLock hold(m_lock);
        return m_live.lock();
    }
    std::shared_ptr<IDataSourceBase> GetSource() override
    {
        const TvlUtils::WriteLock hold(m_lock);
        if (auto live = m_live.lock())
            return live;
        const auto made = std::make_shared<Source>();
        made->PostConstruct();
        m_live = made;
        return made;
    }

private:
    const TvlString m_name = DataSourceName(typeid(Source));
    mutable TvlUtils::ThreadLock m_lock;   // guards the next
    std::weak_ptr<IDataSourceBase> m_live;
};

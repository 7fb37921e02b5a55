// Finds data sources by name.
#pragma once

#include "siblings/DataBinding/IDataSource.h"

#include <memory>

/// Makes one kind of source, and knows the one that lives. Any thread may call.
class IDataSourceFactory {
public:
    /// By what controls ask for the source; the same as long as the factory lives.
    virtual const TvlString& GetName() const = 0;
    /// The live source, or null.
    virtual std::shared_ptr<IDataSourceBase> GetLiveSource() const = 0;
    /// The live source, made when there is none. It lives as long as somebody holds it.
    virtual std::shared_ptr<IDataSourceBase> GetSource() = 0;

protected:
    ~IDataSourceFactory() = default;
};

/// The process-wide register of factories. Any thread may call.
class TVLSIBLINGS_API IDataSourceRegistrar {
public:
    /// The register of the process.
    static IDataSourceRegistrar& GetInstance();

    /// Adds a factory under its name, unless there is one of this name already. The factory is not owned.
    virtual void AddFactory(IDataSourceFactory& factory) = 0;
    /// Forgets a factory.
    virtual void RemoveFactory(IDataSourceFactory& factory) noexcept = 0;
    /// The factory of a name, or null. It is good as long as its module.
    virtual IDataSourceFactory* FindFactory(const TvlString& name) const = 0;

protected:
    ~IDataSourceRegistrar() = default;
};

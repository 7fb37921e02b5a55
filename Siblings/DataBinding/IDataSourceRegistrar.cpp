#include "siblings/DataBinding/IDataSourceRegistrar.h"

#include "siblings/TvlUtils/ThreadLock.h"

#include <map>

namespace {
class Registrar final : public IDataSourceRegistrar {
public:
    void AddFactory(IDataSourceFactory& factory) override
    {
        const TvlUtils::WriteLock hold(m_lock);
        m_factories.emplace(factory.GetName(), &factory);
    }
    void RemoveFactory(IDataSourceFactory& factory) noexcept override
    {
        const TvlUtils::WriteLock hold(m_lock);
        std::erase_if(m_factories, [&](const auto& entry) { return entry.second == &factory; });
    }
    IDataSourceFactory* FindFactory(const TvlString& name) const override
    {
        const TvlUtils::ReadLock hold(m_lock);
        const auto found = m_factories.find(name);
        return found == m_factories.end() ? nullptr : found->second;
    }

private:
    mutable TvlUtils::ThreadLock m_lock;   // guards the next
    std::map<TvlString, IDataSourceFactory*> m_factories;
};
}   // namespace

// Never destroyed: modules take their factories out when they go away, in an order of their own.
IDataSourceRegistrar& IDataSourceRegistrar::GetInstance()
{
    static Registrar& registrar = *new Registrar;
    return registrar;
}

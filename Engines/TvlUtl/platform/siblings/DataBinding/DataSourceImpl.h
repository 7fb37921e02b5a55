// A data source that is made of declared properties.
#pragma once

#include "siblings/DataBinding/IDataSource.h"
#include "siblings/TvlUtils/Callables.h"
#include "siblings/TvlUtils/PostConstructible.h"

#include <atomic>
#include <map>

/// Keeps the accessors of a source's properties by name.
class TVLSIBLINGS_API DataSourceImpl : public IDataSourceBase, public TvlUtils::PostConstructible {
public:
    /// Gives a property's value, on the thread that asks for it.
    using Getter = TvlUtils::basic_safe_function<DataSourceValue()>;
    /// Takes a property's new value, of whatever type, on the thread that brings it.
    using Setter = TvlUtils::basic_safe_function<void(const DataSourceValue&)>;

    /// Without properties and without a provider.
    DataSourceImpl();
    ~DataSourceImpl() override;
    DataSourceImpl(const DataSourceImpl&) = delete;
    DataSourceImpl& operator=(const DataSourceImpl&) = delete;

    std::vector<TvlString> GetPropertyNames() const override;
    bool HasAccessor(const TvlString& accessor) const override;
    DataSourceValue GetProperty(const TvlString& property) const override;
    bool PutProperty(const TvlString& property, const DataSourceValue& value) override;
    void NotifyPropertyChanged(const TvlString& property) override;
    TvlUtils::EventBase& GetChangedEvent() override;

    /// The provider is not owned and must live until another one or null is set, and changes under way have been told.
    void SetDataSourceProvider(IDataSourceProvider* provider);

    /// Whether any source lives in the process. One load: those who would tell of changes ask it first.
    static bool AnyLives();

protected:
    /// Declares a property with the accessors "get_" and "put_" before its name; an empty one is not declared. Of a
    /// property that is declared twice the later accessors count. For CallOnPostConstruct: once others know the source,
    /// nothing may be declared any more.
    void DeclareProperty(const TvlString& property, Getter getter, Setter setter);

private:
    std::vector<TvlString> m_properties;
    std::map<TvlString, Getter> m_getters;   // by accessor name
    std::map<TvlString, Setter> m_setters;
    std::atomic<IDataSourceProvider*> m_provider = nullptr;
    TvlUtils::EventBase m_changed;
};

/// Base of the source `Source`. `Part` tells apart the bases of one that is put together of several.
template <class Source, int Part>
class PartialDataSource : public DataSourceImpl {
};

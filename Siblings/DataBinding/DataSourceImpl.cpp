#include "siblings/DataBinding/DataSourceImpl.h"

#include <algorithm>

namespace {
const TvlString kGet = L"get_";
const TvlString kPut = L"put_";

std::atomic<int> liveSources = 0;
}   // namespace

DataSourceImpl::DataSourceImpl() { ++liveSources; }
DataSourceImpl::~DataSourceImpl() { --liveSources; }
bool DataSourceImpl::AnyLives() { return liveSources.load(std::memory_order_acquire) > 0; }

std::vector<TvlString> DataSourceImpl::GetPropertyNames() const { return m_properties; }

bool DataSourceImpl::HasAccessor(const TvlString& accessor) const
{
    return m_getters.contains(accessor) || m_setters.contains(accessor);
}

DataSourceValue DataSourceImpl::GetProperty(const TvlString& property) const
{
    const auto found = m_getters.find(kGet + property);
    return found == m_getters.end() ? DataSourceValue() : found->second();
}

bool DataSourceImpl::PutProperty(const TvlString& property, const DataSourceValue& value)
{
    const auto found = m_setters.find(kPut + property);
    if (found == m_setters.end())
        return false;
    found->second(value);
    return true;
}

void DataSourceImpl::NotifyPropertyChanged(const TvlString& property)
{
    if (IDataSourceProvider* const provider = m_provider.load(std::memory_order_acquire))
        provider->DataSourceChanged(*this, property);
    Change change{*this, property};
    m_changed.Raise(&change);
}

TvlUtils::EventBase& DataSourceImpl::GetChangedEvent() { return m_changed; }

void DataSourceImpl::SetDataSourceProvider(IDataSourceProvider* provider)
{
    m_provider.store(provider, std::memory_order_release);
}

void DataSourceImpl::DeclareProperty(const TvlString& property, Getter getter, Setter setter)
{
    if (std::find(m_properties.begin(), m_properties.end(), property) == m_properties.end())
        m_properties.push_back(property);
    if (getter)
        m_getters.insert_or_assign(kGet + property, std::move(getter));
    if (setter)
        m_setters.insert_or_assign(kPut + property, std::move(setter));
}

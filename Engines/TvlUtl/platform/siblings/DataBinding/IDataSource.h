// Named data sources: properties that bound controls read, write and are told of.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/EventBase.h"

#include <variant>
#include <vector>

/// What a property holds; std::monostate for nothing.
using DataSourceValue = std::variant<std::monostate, bool, int, double, TvlString>;

/// A source of properties, as bound controls see it. Any thread may call.
class IDataSourceBase {
public:
    /// What the sender of the change event points to.
    struct Change {
        IDataSourceBase& source;     // which holds the new value
        const TvlString& property;   // by its name
    };

    virtual ~IDataSourceBase() = default;
    /// Names of the properties in the order of their declaration.
    virtual std::vector<TvlString> GetPropertyNames() const = 0;
    /// Whether there is an accessor, such as "get_Progress" or "put_Progress".
    virtual bool HasAccessor(const TvlString& accessor) const = 0;
    /// The value of a property; std::monostate when there is none of this name.
    virtual DataSourceValue GetProperty(const TvlString& property) const = 0;
    /// Changes a property; false when there is none of this name, or it can't be changed.
    virtual bool PutProperty(const TvlString& property, const DataSourceValue& value) = 0;
    /// Tells the provider and then the listeners that a property has changed.
    virtual void NotifyPropertyChanged(const TvlString& property) = 0;
    /// Raised for each change; the sender is a `const Change*`, cast to void*.
    virtual TvlUtils::EventBase& GetChangedEvent() = 0;
};

/// What brings a source to its controls: told first of every change.
class IDataSourceProvider {
public:
    /// A property of a source has changed; the source holds the new value already. Runs on the thread that changed it.
    virtual void DataSourceChanged(IDataSourceBase& source, const TvlString& property) = 0;

protected:
    ~IDataSourceProvider() = default;
};

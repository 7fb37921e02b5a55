// Global preferences: named values that users change, with defaults.
#pragma once

#include "siblings/TvlPref/PrefManager.h"
#include "siblings/TvlPref/PrefText.h"

#include <utility>

/// One preference of type bool, TvlString or std::vector<TvlString>. Meant for static objects: registers with
/// `Manager::GetInstance()` when it is made, and leaves at its end. Reading asks the store each time, so that a change
/// shows at once.
template <class T, class Manager>
class CPrefObject : public CPrefObjectBase {
public:
    /// Computes a default. Called anew whenever one is needed.
    using DefaultFunction = T (*)();

    /// @param name            group, slash and key
    /// @param defaultValue    what the preference is as long as nothing is stored
    /// @param defaultFunction computes that anew at each reading, in place of `defaultValue`; may be null
    explicit CPrefObject(const wchar_t* name, T defaultValue = T(), DefaultFunction defaultFunction = nullptr)
        : CPrefObjectBase(name), m_defaultFunction(defaultFunction), m_defaultValue(std::move(defaultValue))
    {
        Manager::GetInstance().Register(*this);
    }
    ~CPrefObject() { Manager::GetInstance().Unregister(*this); }

    /// The stored value. The default when nothing of this type is stored, or when there is no store.
    T GetValue() const
    {
        if (const IPrefStore* const store = Store())
            if (const auto value = store->Read(GetName()))
                if (auto typed = TvlPref::ValueAs<T>(*value))
                    return *std::move(typed);
        return GetDefault();
    }
    /// Stores a value; false when there is no store or it failed.
    bool SetValue(const T& value)
    {
        IPrefStore* const store = Store();
        return store && store->Write(GetName(), value);
    }
    /// Stores a value that differs from the present one and tells the manager's listeners. False when there is no store
    /// or it failed; nobody is told then.
    bool Change(const T& value)
    {
        if (!Store())
            return false;
        if (GetValue() == value)
            return true;
        if (!SetValue(value))
            return false;
        Manager::GetInstance().NotifyChanged(*this);
        return true;
    }
    /// What GetValue gives while nothing of this type is stored.
    T GetDefault() const { return m_defaultFunction ? m_defaultFunction() : m_defaultValue; }

private:
    const DefaultFunction m_defaultFunction;
    const T m_defaultValue;
};

/// A preference of one application.
template <class T>
using CAppPrefObject = CPrefObject<T, CAppPrefManager>;

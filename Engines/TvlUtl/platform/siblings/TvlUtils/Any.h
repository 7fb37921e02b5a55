// A value of any type.
#pragma once

#include <any>
#include <type_traits>
#include <utility>

namespace TvlUtils {

/// Holds a copyable value, or none. What it holds is asked for by its exact type: an int is no bool and no text.
class Any {
public:
    /// Without a value.
    Any() = default;
    /// A copy of a value, or the value itself where it may be moved.
    template <class T>
    requires(!std::is_same_v<std::decay_t<T>, Any>) Any(T&& value) : m_value(std::forward<T>(value)) { }

    /// Whether there is a value, of whatever type.
    bool HasValue() const { return m_value.has_value(); }
    /// The value, or null when there is none or one of another type. It lives as long as this object is not assigned to.
    template <class T>
    const T* Get() const
    {
        return std::any_cast<T>(&m_value);
    }
    /// The value, or `other` when there is none or one of another type.
    template <class T>
    T GetOr(T other) const
    {
        const T* const value = Get<T>();
        return value ? *value : std::move(other);
    }

private:
    std::any m_value;
};

}   // namespace TvlUtils

// Callables that are safe to call when nothing was put into them.
#pragma once

#include <functional>
#include <utility>

namespace TvlUtils {

/// Takes anything and does nothing.
struct do_nothing_t {
    template <class... Args>
    /// Takes anything.
    void operator()(Args&&...) const
    {
    }
};

/// Takes anything and gives the same value each time.
template <class T>
struct always_return_t {
    T value{};   // what is given

    template <class... Args>
    /// A copy of the value.
    T operator()(Args&&...) const
    {
        return value;
    }
};

template <class Signature>
class basic_safe_function;

/// A std::function that gives a value-initialised result instead of throwing when it is empty.
template <class Result, class... Args>
class basic_safe_function<Result(Args...)> {
public:
    /// Empty.
    basic_safe_function() = default;
    /// A copy of something to call, or the thing itself where it may be moved.
    template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, basic_safe_function>)
        basic_safe_function(Callable&& callable)
        : m_function(std::forward<Callable>(callable))
    {
    }

    /// Whether there is something to call.
    explicit operator bool() const { return static_cast<bool>(m_function); }
    /// Calls what is there, and passes on what it throws.
    Result operator()(Args... args) const { return m_function ? m_function(std::forward<Args>(args)...) : Result(); }

private:
    std::function<Result(Args...)> m_function;
};

}   // namespace TvlUtils

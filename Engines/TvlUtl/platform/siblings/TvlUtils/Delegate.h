// An object and what to do with it, in two words.
#pragma once

namespace TvlUtils {

template <class Signature>
class Delegate;

/// Calls a stub with an object pointer. Two delegates are equal when both words are. A delegate refers to its object
/// and does not own it.
template <class Result, class... Args>
class Delegate<Result (*)(Args...)> {
public:
    /// What is called, with the object first.
    using Stub = Result (*)(void*, Args...);

    /// Must not be called.
    Delegate() = default;
    /// Neither is checked; `object` may be null where the stub does without.
    Delegate(void* object, Stub stub) : m_object(object), m_stub(stub) { }

    /// A delegate for a member function.
    template <auto member, class Object>
    static Delegate To(Object* object)
    {
        return {
            object, [](void* self, Args... args) -> Result { return (static_cast<Object*>(self)->*member)(args...); }};
    }
    /// A delegate for a free function, which has no object.
    template <auto function>
    static Delegate To()
    {
        return {nullptr, [](void*, Args... args) -> Result { return function(args...); }};
    }

    /// Calls the stub, and passes on what it throws.
    Result operator()(Args... args) const { return m_stub(m_object, args...); }
    /// Whether both words are equal.
    friend bool operator==(const Delegate&, const Delegate&) = default;

private:
    void* m_object = nullptr;
    Stub m_stub = nullptr;
};

/// The same, named by the signature alone.
template <class Result, class... Args>
class Delegate<Result(Args...)> : public Delegate<Result (*)(Args...)> {
public:
    using Delegate<Result (*)(Args...)>::Delegate;
    /// Takes the words over.
    Delegate(const Delegate<Result (*)(Args...)>& other) : Delegate<Result (*)(Args...)>(other) { }
};

}   // namespace TvlUtils

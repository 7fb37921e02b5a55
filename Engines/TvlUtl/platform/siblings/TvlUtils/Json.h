// Reads JSON that comes from outside.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

/// JSON as values; for reading alone.
namespace TvlUtils::Json {

struct Value;
/// Values in the order of the text.
using Array = std::vector<Value>;

/// Members by name. Of a name that stands there twice the later value counts.
class TVLSIBLINGS_API Object {
public:
    /// Without members.
    Object();
    /// @{
    /// Members are copied, or taken over.
    Object(const Object&);
    Object(Object&&) noexcept;
    Object& operator=(const Object&);
    Object& operator=(Object&&) noexcept;
    /// @}
    ~Object();

    // False, and the value left alone, when there is no member of this name or it is of another kind.

    /// @{
    /// The member of this name; false, and `value` left alone, when there is none or it is of another kind.
    bool GetValue(const TvlString& name, TvlString& value) const;
    bool GetValue(const TvlString& name, bool& value) const;
    bool GetValue(const TvlString& name, double& value) const;
    bool GetValue(const TvlString& name, Object& value) const;
    bool GetValue(const TvlString& name, Array& value) const;
    /// @}

    /// The member of this name, or null.
    const Value* Find(const TvlString& name) const;
    /// All members, by name.
    const std::map<TvlString, Value>& Members() const;
    /// Adds a member, or replaces the one of this name.
    void Set(TvlString name, Value value);

private:
    std::unique_ptr<std::map<TvlString, Value>> m_members;
};

/// Any value; std::monostate is null.
struct Value : std::variant<std::monostate, bool, double, TvlString, Array, Object> {
    using variant::variant;
};

/// What a text may have at most. Deeper or longer ones are refused before they take memory.
struct Limits {
    std::size_t bytes = std::size_t{1} << 20;   // of the text
    int depth = 64;                             // objects and arrays in one another
};

/// The object that a UTF-8 text is; empty when it is anything else, not valid JSON, not valid UTF-8, or past the limits.
TVLSIBLINGS_API std::optional<Object> Parse(std::string_view text, const Limits& limits = {});

}   // namespace TvlUtils::Json

// Identifiers that are unique in practice.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "windows/Types.h"

namespace TvlUtils {

/// A GUID as a value.
class TVLSIBLINGS_API Guid {
public:
    /// Nil.
    Guid() = default;
    /// The same identifier.
    explicit Guid(const GUID& value) : m_value(value) { }
    /// Reads what ToString writes, in either case and with or without braces; nil for any other text.
    explicit Guid(const TvlString& text);

    /// A new random GUID (version 4). Safe to call from any thread.
    static Guid Generate();
    /// 36 characters in lower case with hyphens, without braces.
    TvlString ToString() const;

    /// The 16 bytes with Windows' layout.
    const GUID& Value() const { return m_value; }
    /// All bits are zero: an identifier of nothing.
    bool IsNil() const { return *this == Guid(); }
    /// Whether all bits are equal.
    bool operator==(const Guid& other) const;

private:
    GUID m_value{};
};

}   // namespace TvlUtils

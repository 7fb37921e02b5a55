// Values of attributes and elements as they stand in documents.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

/// Nothing for what is no integer of 32 bits. Blanks around a value are ignored by all.
std::optional<int> ToInt(std::string_view value);
/// Nothing for what is no number; a number out of range is infinite or 0.0.
std::optional<double> ToDouble(std::string_view value);
/// "true", "1", "false" and "0".
std::optional<bool> ToBool(std::string_view value);

/// A number as documents hold it; the shortest text that reads as the same number.
class NumberText {
public:
    template <class Number>
    explicit NumberText(Number value)
    {
        *std::to_chars(m_text, m_text + sizeof m_text - 1, value).ptr = '\0';
    }
    const char* Get() const { return m_text; }

private:
    char m_text[32];
};

inline const char* BoolText(bool value) { return value ? "true" : "false"; }

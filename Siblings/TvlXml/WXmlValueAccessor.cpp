// Values of attributes and elements.
#include "TvlXml/XmlElement.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace {
/// Whether an attribute has this name, which is compared without being converted.
bool HasName(const char* bytes, const wchar_t* name)
{
    while (*name && static_cast<unsigned char>(*bytes) < 0x80 && *name == static_cast<wchar_t>(*bytes)) {
        ++bytes;
        ++name;
    }
    if (!*bytes && !*name)
        return true;
    return static_cast<unsigned char>(*bytes) >= 0x80 && TvlPlatform::ToUtf8(name) == bytes;
}

pugi::xml_attribute FindAttribute(const pugi::xml_node& element, const wchar_t* name)
{
    for (const pugi::xml_attribute& attribute : element.attributes())
        if (HasName(attribute.name(), name))
            return attribute;
    return {};
}

std::string_view Trimmed(std::string_view text)
{
    constexpr const char* kBlanks = " \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::optional<int> ToInt(const char* bytes)
{
    const std::string_view text = Trimmed(bytes ? bytes : "");
    const char* const begin = text.data() + (text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    const char* const end = text.data() + text.size();
    int value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

std::optional<double> ToDouble(const char* bytes)
{
    const std::string_view text = Trimmed(bytes ? bytes : "");
    if (text.find_first_not_of("+-.0123456789eE") != text.npos)
        return std::nullopt;   // among others the words for what is no number
    const char* const begin = text.data() + (text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    const char* const end = text.data() + text.size();
    double value = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (stop != end || error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        const bool isTiny = text.find("e-") != text.npos || text.find("E-") != text.npos || text.find("0.0") < 2;
        value = isTiny ? 0.0 : std::numeric_limits<double>::infinity();
        value = text.starts_with('-') ? -value : value;
    }
    return value;
}
}   // namespace

bool WXmlValueAccessor::Exists() const { return Bytes() != nullptr; }

const char* WXmlValueAccessor::Bytes() const
{
    const pugi::xml_node element = XmlElement(m_element);
    if (!m_attribute)
        return element.text() ? element.text().get() : nullptr;
    const pugi::xml_attribute attribute = FindAttribute(element, m_attribute);
    return attribute ? attribute.value() : nullptr;
}

void WXmlValueAccessor::SetBytes(const char* bytes)
{
    pugi::xml_node element = XmlElement(m_element);
    if (!m_attribute) {
        element.text().set(bytes);
        return;
    }
    pugi::xml_attribute attribute = FindAttribute(element, m_attribute);
    if (!attribute)
        attribute = element.append_attribute(TvlPlatform::ToUtf8(m_attribute).c_str());
    attribute.set_value(bytes);
}

int WXmlValueAccessor::GetInt(int defaultValue) const { return ToInt(Bytes()).value_or(defaultValue); }

int WXmlValueAccessor::GetInt_throws() const
{
    if (const auto value = ToInt(Bytes()))
        return *value;
    throw std::runtime_error("no integer");
}

double WXmlValueAccessor::GetDouble(double defaultValue) const { return ToDouble(Bytes()).value_or(defaultValue); }

TvlString WXmlValueAccessor::GetString(const TvlString& defaultValue) const
{
    const char* const bytes = Bytes();
    return bytes ? TvlString(TvlPlatform::FromUtf8(bytes)) : defaultValue;
}

bool WXmlValueAccessor::GetBool(bool defaultValue) const
{
    const char* const bytes = Bytes();
    const std::string_view text = Trimmed(bytes ? bytes : "");
    if (text == "true" || text == "1")
        return true;
    return text == "false" || text == "0" ? false : defaultValue;
}

void WXmlValueAccessor::SetInt(int value) { SetBytes(std::to_string(value).c_str()); }

void WXmlValueAccessor::SetInt(int value, int defaultValue)
{
    if (value != defaultValue)
        SetInt(value);
}

void WXmlValueAccessor::SetDouble(double value)
{
    // The shortest text that reads as the same number.
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text - 1, value).ptr;
    *end = '\0';
    SetBytes(text);
}

void WXmlValueAccessor::SetString(const TvlString& value) { SetBytes(TvlPlatform::ToUtf8(value).c_str()); }
void WXmlValueAccessor::SetBool(bool value) { SetBytes(value ? "true" : "false"); }

void WXmlValueAccessor::SetBool(bool value, bool defaultValue)
{
    if (value != defaultValue)
        SetBool(value);
}

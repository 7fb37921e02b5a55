// Values of attributes and elements.
#include "TvlXml/XmlElement.h"
#include "TvlXml/XmlValues.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <string_view>

namespace {
/// A name in UTF-8. Names are ASCII as a rule: those need no memory.
class NarrowName {
public:
    explicit NarrowName(const wchar_t* name)
    {
        std::size_t size = 0;
        for (; size + 1 < sizeof m_ascii && name[size] && name[size] < 0x80; ++size)
            m_ascii[size] = static_cast<char>(name[size]);
        m_ascii[size] = '\0';
        if (name[size])
            m_other = TvlPlatform::ToUtf8(name);
    }
    const char* Get() const { return m_other.empty() ? m_ascii : m_other.c_str(); }

private:
    char m_ascii[32];
    std::string m_other;
};

/// Sets an element's text. Throws std::bad_alloc, and the text is the old one or none then.
void SetText(pugi::xml_node element, const char* bytes)
{
    const bool hadText = static_cast<bool>(element.text());
    if (element.text().set(bytes))
        return;
    if (!hadText)
        element.remove_child(element.text().data());
    throw std::bad_alloc();
}
}   // namespace

WXmlValueAccessor WXmlNode::Attribute(const wchar_t* name) const
{
    pugi::xml_attribute last = XmlAttribute(m_lastFound);
    const pugi::xml_attribute found = XmlElement(m_element).attribute(NarrowName(name).Get(), last);
    if (found)
        m_lastFound = found.internal_object();
    return {m_element, name, found.internal_object()};
}

bool WXmlValueAccessor::Exists() const { return Bytes() != nullptr; }

const char* WXmlValueAccessor::Bytes() const
{
    if (m_name)
        return m_attribute ? XmlAttribute(m_attribute).value() : nullptr;
    const pugi::xml_text text = XmlElement(m_element).text();
    return text ? text.get() : nullptr;
}

void WXmlValueAccessor::SetBytes(const char* bytes)
{
    pugi::xml_node element = XmlElement(m_element);
    if (!element)
        return;
    if (!m_name)
        return SetText(element, bytes);
    if (!m_attribute) {
        const NarrowName name(m_name);
        m_attribute = element.attribute(name.Get()).internal_object();   // another accessor may have made it
        if (!m_attribute) {
            m_attribute = AddAttribute(element, name.Get(), bytes).internal_object();
            return;
        }
    }
    SetAttribute(XmlAttribute(m_attribute), bytes);
}

int WXmlValueAccessor::GetInt(int defaultValue) const { return ToInt(GetUtf8()).value_or(defaultValue); }

int WXmlValueAccessor::GetInt_throws() const
{
    if (const auto value = ToInt(GetUtf8()))
        return *value;
    throw std::runtime_error("no integer");
}

double WXmlValueAccessor::GetDouble(double defaultValue) const { return ToDouble(GetUtf8()).value_or(defaultValue); }

std::string_view WXmlValueAccessor::GetUtf8() const
{
    const char* const bytes = Bytes();
    return bytes ? bytes : std::string_view();
}

TvlString WXmlValueAccessor::GetString(const TvlString& defaultValue) const
{
    const char* const bytes = Bytes();
    return bytes ? TvlString(TvlPlatform::FromUtf8(bytes)) : defaultValue;
}

bool WXmlValueAccessor::GetBool(bool defaultValue) const { return ToBool(GetUtf8()).value_or(defaultValue); }

void WXmlValueAccessor::SetInt(int value) { SetBytes(NumberText(value).Get()); }

void WXmlValueAccessor::SetInt(int value, int defaultValue)
{
    if (value != defaultValue)
        SetInt(value);
}

void WXmlValueAccessor::SetDouble(double value) { SetBytes(NumberText(value).Get()); }
void WXmlValueAccessor::SetString(const TvlString& value) { SetBytes(TvlPlatform::ToUtf8(value).c_str()); }
void WXmlValueAccessor::SetBool(bool value) { SetBytes(BoolText(value)); }

void WXmlValueAccessor::SetBool(bool value, bool defaultValue)
{
    if (value != defaultValue)
        SetBool(value);
}

// All attributes of an element at once.
#include "TvlXml/XmlElement.h"
#include "TvlXml/XmlValues.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <cstring>

WXmlAttributes::WXmlAttributes(const WXmlNode& node)
{
    pugi::xml_attribute attribute = XmlElement(node.m_element).first_attribute();
    for (; attribute && m_count < kCapacity; attribute = attribute.next_attribute())
        m_attributes[m_count++] = {attribute.name(), std::strlen(attribute.name()), attribute.value()};
    m_beyond = attribute.internal_object();
}

std::string_view WXmlAttributes::Find(std::string_view name) const
{
    for (std::size_t i = 0; i < m_count; ++i) {
        const std::size_t at = m_next + i < m_count ? m_next + i : m_next + i - m_count;
        const Attribute& attribute = m_attributes[at];
        if (std::string_view(attribute.name, attribute.nameSize) != name)
            continue;
        m_next = at + 1;
        return attribute.value;
    }
    return m_beyond ? FindBeyond(name) : std::string_view();
}

std::string_view WXmlAttributes::FindBeyond(std::string_view name) const
{
    for (pugi::xml_attribute other = XmlAttribute(m_beyond); other; other = other.next_attribute())
        if (other.name() == name)
            return other.value();
    return {};
}

int WXmlAttributes::GetInt(std::string_view name, int defaultValue) const
{
    return ToInt(Find(name)).value_or(defaultValue);
}

double WXmlAttributes::GetDouble(std::string_view name, double defaultValue) const
{
    return ToDouble(Find(name)).value_or(defaultValue);
}

bool WXmlAttributes::GetBool(std::string_view name, bool defaultValue) const
{
    return ToBool(Find(name)).value_or(defaultValue);
}

std::string_view WXmlAttributes::GetUtf8(std::string_view name, std::string_view defaultValue) const
{
    const std::string_view value = Find(name);
    return value.data() ? value : defaultValue;
}

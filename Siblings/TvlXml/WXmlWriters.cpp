#include "siblings/TvlXml/WXmlWriters.h"

#include "TvlXml/XmlElement.h"
#include "TvlXml/XmlValues.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <string_view>

WXmlAttributeWriter::WXmlAttributeWriter(const WXmlNode& node)
    : m_element(node.m_element), m_next(XmlElement(m_element).first_attribute().internal_object())
{
    node.m_lastFound = nullptr;   // it may go
}

WXmlAttributeWriter::~WXmlAttributeWriter()
{
    pugi::xml_node element = XmlElement(m_element);
    for (pugi::xml_attribute old = XmlAttribute(m_next); old;) {
        const pugi::xml_attribute next = old.next_attribute();
        element.remove_attribute(old);
        old = next;
    }
}

void WXmlAttributeWriter::Set(const char* name, const char* value)
{
    pugi::xml_attribute old = XmlAttribute(m_next);
    if (old && std::string_view(old.name()) == name) {
        m_next = old.next_attribute().internal_object();
        if (std::string_view(old.value()) != value)
            SetAttribute(old, value);
        return;
    }
    AddAttribute(XmlElement(m_element), name, value, old);
}

void WXmlAttributeWriter::SetInt(const char* name, int value) { Set(name, NumberText(value).Get()); }

void WXmlAttributeWriter::SetInt(const char* name, int value, int defaultValue)
{
    if (value != defaultValue)
        SetInt(name, value);
}

void WXmlAttributeWriter::SetDouble(const char* name, double value) { Set(name, NumberText(value).Get()); }

void WXmlAttributeWriter::SetString(const char* name, const TvlString& value)
{
    Set(name, TvlPlatform::ToUtf8(value).c_str());
}

void WXmlAttributeWriter::SetBool(const char* name, bool value, bool defaultValue)
{
    if (value != defaultValue)
        Set(name, BoolText(value));
}

WXmlListWriter::WXmlListWriter(const WXmlNode& parent, const wchar_t* list, const wchar_t* item)
    : m_item(TvlPlatform::ToUtf8(item))
{
    pugi::xml_node element = XmlElement(parent.m_element);
    const std::string name = TvlPlatform::ToUtf8(list);
    pugi::xml_node child = element.child(name.c_str());
    if (child && child.next_sibling())
        child = element.append_move(child);
    else if (!child)
        child = AddChild(element, name.c_str());
    child.remove_attributes();
    m_list = child.internal_object();
    m_next = child.first_child().internal_object();
}

WXmlListWriter::~WXmlListWriter()
{
    pugi::xml_node list = XmlElement(m_list);
    for (pugi::xml_node old = XmlElement(m_next); old;) {
        const pugi::xml_node next = old.next_sibling();
        list.remove_child(old);
        old = next;
    }
}

WXmlNode WXmlListWriter::Next()
{
    pugi::xml_node list = XmlElement(m_list);
    pugi::xml_node old = XmlElement(m_next);
    while (old && (m_item != old.name() || old.first_child())) {
        const pugi::xml_node next = old.next_sibling();
        list.remove_child(old);
        old = next;
    }
    m_next = old ? old.next_sibling().internal_object() : nullptr;
    return WXmlNode(old ? old.internal_object() : AddChild(list, m_item.c_str()).internal_object());
}

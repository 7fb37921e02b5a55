// The form in which nodes are kept behind the interface.
#pragma once

#include <pugixml.hpp>

inline pugi::xml_node XmlElement(void* element) { return pugi::xml_node(static_cast<pugi::xml_node_struct*>(element)); }
inline pugi::xml_attribute XmlAttribute(void* attribute)
{
    return pugi::xml_attribute(static_cast<pugi::xml_attribute_struct*>(attribute));
}

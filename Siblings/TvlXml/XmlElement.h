// The form in which nodes are kept behind the interface, and additions that tell when there is no memory: pugixml gives
// nothing then, or something without its name.
#pragma once

#include <new>
#include <pugixml.hpp>

inline pugi::xml_node XmlElement(void* element) { return pugi::xml_node(static_cast<pugi::xml_node_struct*>(element)); }
inline pugi::xml_attribute XmlAttribute(void* attribute)
{
    return pugi::xml_attribute(static_cast<pugi::xml_attribute_struct*>(attribute));
}

/// Adds a child behind the others; nothing in nothing. Throws std::bad_alloc, and the parent is as before then.
inline pugi::xml_node AddChild(pugi::xml_node parent, const char* name)
{
    const pugi::xml_node child = parent.append_child(name);
    if (*child.name() || !parent || (child && !*name))
        return child;
    parent.remove_child(child);
    throw std::bad_alloc();
}

/// Adds an attribute in front of `next`, or behind the others when that is null; nothing to nothing. Throws
/// std::bad_alloc, and the element is as before then.
inline pugi::xml_attribute AddAttribute(
    pugi::xml_node element, const char* name, const char* value, const pugi::xml_attribute& next = {})
{
    pugi::xml_attribute added = next ? element.insert_attribute_before(name, next) : element.append_attribute(name);
    if ((added.set_value(value) && (*added.name() || !*name)) || !element)
        return added;
    element.remove_attribute(added);
    throw std::bad_alloc();
}

/// Changes an attribute that is there. Throws std::bad_alloc, and the value is the old one then.
inline void SetAttribute(pugi::xml_attribute attribute, const char* value)
{
    if (!attribute.set_value(value))
        throw std::bad_alloc();
}

// Lists of elements written over those that stand in a document, so that saving what hardly changed costs hardly
// anything. The document is the same as if the list had been deleted and made anew.
#pragma once

#include "siblings/TvlXml/WXmlDoc.h"

#include <string>

/// Writes the attributes of an element in the order of the calls; what else the element had goes when the writer does.
/// Belongs to a document that lives and is changed by nobody else meanwhile. Other copies of the node that attributes
/// were read through are not to be read through any more.
class TVLSIBLINGS_API WXmlAttributeWriter {
public:
    /// Begins with the element's first attribute.
    explicit WXmlAttributeWriter(const WXmlNode& node);
    WXmlAttributeWriter(const WXmlAttributeWriter&) = delete;
    WXmlAttributeWriter& operator=(const WXmlAttributeWriter&) = delete;
    ~WXmlAttributeWriter();

    // Names are in UTF-8. Values are written as WXmlValueAccessor writes them; those with a default not when they equal it.

    /// @{
    /// Writes an attribute as WXmlValueAccessor does, in place of the old one whose turn it is. The name is in UTF-8.
    /// Those with a default write nothing when the value equals it.
    void SetInt(const char* name, int value);
    void SetInt(const char* name, int value, int defaultValue);
    void SetDouble(const char* name, double value);
    void SetString(const char* name, const TvlString& value);
    void SetBool(const char* name, bool value, bool defaultValue);
    /// @}

private:
    void Set(const char* name, const char* value);

    void* m_element;
    void* m_next;   // the old attribute whose turn it is; null when there is none
};

/// Writes the children of an element's child: `list.Next()` for each. What else stood in the list goes when the writer does.
class TVLSIBLINGS_API WXmlListWriter {
public:
    /// Puts the first child of a name behind the element's other children, without attributes, or makes one there.
    WXmlListWriter(const WXmlNode& parent, const wchar_t* list, const wchar_t* item);
    WXmlListWriter(const WXmlListWriter&) = delete;
    WXmlListWriter& operator=(const WXmlListWriter&) = delete;
    ~WXmlListWriter();

    /// The next element. It may have attributes, which a WXmlAttributeWriter writes over, and nothing in it.
    WXmlNode Next();

private:
    void* m_list;
    void* m_next;   // the old child whose turn it is
    std::string m_item;
};

// Elements: selection and change.
#include "siblings/TvlXml/WXmlDoc.h"

#include "TvlXml/XmlElement.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <pugixml.hpp>
#include <string_view>

namespace {
bool IsNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Steps of a plain path, such as "a/b/*" or "/a/b": names alone, and perhaps a last "*".
bool IsPlainPath(std::string_view path)
{
    if (path.empty() || path.back() == '/')
        return false;
    bool wasSlash = true;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const bool isSlash = path[i] == '/';
        const bool isStar = path[i] == '*' && i + 1 == path.size() && wasSlash;
        if ((isSlash && wasSlash && i > 0) || (!isSlash && !isStar && !IsNameCharacter(path[i])))
            return false;
        wasSlash = isSlash;
    }
    return true;
}

/// Calls `take` with each element of a plain path until it answers false. Walking children costs a fraction of what the
/// evaluation of the same expression does.
template <class Take>
bool WalkPlainPath(const pugi::xml_node& from, std::string_view path, Take& take)
{
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view step = path.substr(0, end);
    for (const pugi::xml_node& child : from.children()) {
        if (child.type() != pugi::node_element || (step != "*" && step != child.name()))
            continue;
        const bool goesOn = end == path.size() ? take(child) : WalkPlainPath(child, path.substr(end + 1), take);
        if (!goesOn)
            return false;
    }
    return true;
}

/// Calls `take` with each selected element until it answers false.
template <class Take>
void Select(const pugi::xml_node& from, const WXPath& path, Take take)
{
    const std::string expression = TvlPlatform::ToUtf8(path.Expression());
    if (IsPlainPath(expression)) {
        const bool isAbsolute = expression.front() == '/';
        WalkPlainPath(isAbsolute ? from.root() : from, std::string_view(expression).substr(isAbsolute ? 1 : 0), take);
        return;
    }
    try {
        for (const pugi::xpath_node& found : from.select_nodes(expression.c_str()))
            if (found.node().type() == pugi::node_element && !take(found.node()))
                return;
    } catch (const pugi::xpath_exception& failure) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Warning,
            TvlString().Format(L"the path \"%s\" can't be read: %S", path.Expression().Std(), failure.what()));
    }
}
}   // namespace

void WXmlNode::GetNodes(const WXPath& path, WXmlNodeList& nodes) const
{
    nodes.Clear();
    Select(XmlElement(m_element), path, [&](const pugi::xml_node& element) {
        nodes.Add(WXmlNode(element.internal_object()));
        return true;
    });
}

WXmlNode WXmlNode::GetNode(const WXPath& path) const
{
    WXmlNode first;
    Select(XmlElement(m_element), path, [&](const pugi::xml_node& element) {
        first = WXmlNode(element.internal_object());
        return false;
    });
    return first;
}

bool WXmlNode::DeleteChild(const WXPath& path) const
{
    pugi::xml_node element = XmlElement(GetNode(path).m_element);
    return element && element.parent().remove_child(element);
}

WXmlNode WXmlNode::CreateChild(const wchar_t* name, const wchar_t* text) const
{
    const std::string bytes = TvlPlatform::ToUtf8(text ? text : L"");
    pugi::xml_node parent = XmlElement(m_element);
    pugi::xml_node child = AddChild(parent, TvlPlatform::ToUtf8(name).c_str());
    if (child && text && !child.text().set(bytes.c_str())) {
        parent.remove_child(child);
        throw std::bad_alloc();
    }
    return WXmlNode(child.internal_object());
}

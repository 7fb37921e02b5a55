// Properties as elements <property name= type= value=> of one document; texts and lists have an element for each member.
#include "siblings/TvrContainer/Metadata.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/MultiLanguageString.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <algorithm>
#include <vector>

using TvlUtils::Any;
using TvlUtils::Guid;

namespace Metadata {

namespace {
constexpr const wchar_t* kRoot = L"metadata";
constexpr const wchar_t* kProperty = L"property";
constexpr const wchar_t* kName = L"name";
constexpr const wchar_t* kType = L"type";
constexpr const wchar_t* kValue = L"value";
constexpr const wchar_t* kText = L"text";
constexpr const wchar_t* kLanguage = L"lang";
constexpr const wchar_t* kItem = L"item";
constexpr int kVersion = 1;

TvlString ValueOf(const WXmlNode& element) { return element.Attribute(kValue).GetString(L""); }

/// Makes an element of `parent` with a value.
WXmlNode AddValue(const WXmlNode& parent, const wchar_t* name, const TvlString& value)
{
    const WXmlNode element = parent.CreateChild(name, nullptr);
    element.Attribute(kValue).SetString(value);
    return element;
}

/// How a type is kept: its name in the file, and both directions. `write` is false for an Any of another type.
struct TypeRow {
    const wchar_t* name;
    bool (*write)(const WXmlNode& element, const Any& value);
    Any (*read)(const WXmlNode& element);
};

bool WriteInteger(const WXmlNode& element, const Any& value)
{
    const int* const number = value.Get<int>();
    if (number)
        element.Attribute(kValue).SetInt(*number);
    return number;
}

Any ReadInteger(const WXmlNode& element)
{
    const int value = element.Attribute(kValue).GetInt(0);
    // A text that is no number has no value: two defaults tell it from one that is.
    return value == element.Attribute(kValue).GetInt(1) ? Any(value) : Any();
}

bool WriteBoolean(const WXmlNode& element, const Any& value)
{
    const bool* const flag = value.Get<bool>();
    if (flag)
        element.Attribute(kValue).SetBool(*flag);
    return flag;
}

Any ReadBoolean(const WXmlNode& element)
{
    const bool value = element.Attribute(kValue).GetBool(false);
    return value == element.Attribute(kValue).GetBool(true) ? Any(value) : Any();
}

bool WriteText(const WXmlNode& element, const Any& value)
{
    const TvlString* const text = value.Get<TvlString>();
    if (text)
        element.Attribute(kValue).SetString(*text);
    return text;
}

Any ReadText(const WXmlNode& element) { return ValueOf(element); }

bool WriteLanguages(const WXmlNode& element, const Any& value)
{
    const auto* const texts = value.Get<MultiLanguageString>();
    if (!texts)
        return false;
    for (const auto& [language, text] : texts->Texts())
        AddValue(element, kText, text).Attribute(kLanguage).SetString(language);
    return true;
}

Any ReadLanguages(const WXmlNode& element)
{
    MultiLanguageString texts;
    WXmlNodeList nodes;
    element.GetNodes(WXPath(kText), nodes);
    for (std::size_t i = 0; i < std::min(nodes.Count(), MultiLanguageString::kMostLanguages); ++i)
        texts.SetLangString(nodes.Node(i).Attribute(kLanguage).GetString(L""), ValueOf(nodes.Node(i)));
    return texts;
}

bool WriteIdentifier(const WXmlNode& element, const Any& value)
{
    const Guid* const guid = value.Get<Guid>();
    if (guid)
        element.Attribute(kValue).SetString(guid->ToString());
    return guid;
}

Any ReadIdentifier(const WXmlNode& element) { return Guid(ValueOf(element)); }

bool WriteIdentifiers(const WXmlNode& element, const Any& value)
{
    const auto* const guids = value.Get<std::vector<Guid>>();
    if (!guids)
        return false;
    for (const Guid& guid : *guids)
        AddValue(element, kItem, guid.ToString());
    return true;
}

Any ReadIdentifiers(const WXmlNode& element)
{
    std::vector<Guid> guids;
    WXmlNodeList nodes;
    element.GetNodes(WXPath(kItem), nodes);
    for (const WXmlNode& node : nodes)
        guids.emplace_back(ValueOf(node));
    return guids;
}

constexpr TypeRow kTypes[] = {
    {L"integer", WriteInteger, ReadInteger},
    {L"boolean", WriteBoolean, ReadBoolean},
    {L"text", WriteText, ReadText},
    {L"languageTexts", WriteLanguages, ReadLanguages},
    {L"identifier", WriteIdentifier, ReadIdentifier},
    {L"identifierList", WriteIdentifiers, ReadIdentifiers},
};

WXmlNode FindProperty(const WXmlDoc& document, const Definition& property)
{
    const TvlString name(property.name);
    for (const WXmlNode& node : document.GetNodes(WXPath(kProperty)))
        if (node.Attribute(kName).GetString(L"") == name)
            return node;
    return {};
}
}   // namespace

struct Container::Tree {
    WXmlDoc document{false};
    std::string original;   // bytes of the document as it was read
    bool isTouched = false;

    void MakeEmpty()
    {
        document.CreateFromString(TvlString().Format(L"<%s version='%d'/>", kRoot, kVersion));
        original.clear();
    }
};

Container::Container() : m_tree(std::make_unique<Tree>()) { m_tree->MakeEmpty(); }
Container::Container(Container&&) noexcept = default;
Container& Container::operator=(Container&&) noexcept = default;
Container::~Container() = default;

bool Container::SetMetadata(const Definition& property, const Any& value)
{
    const WXmlNode old = FindProperty(m_tree->document, property);
    WXmlDoc scratch(false);
    scratch.CreateFromString(L"<property/>");
    const auto* const row = std::find_if(std::begin(kTypes), std::end(kTypes),
        [&](const TypeRow& type) { return type.write(scratch.GetRootNode(), value); });
    if (value.HasValue() && row == std::end(kTypes))
        return false;
    m_tree->isTouched = true;
    if (!value.HasValue())
        return !old
            || m_tree->document.GetRootNode().DeleteChild(
                WXPath(TvlString(L"property[@name='") + property.name + L"']"));
    const WXmlNode element = old ? old : m_tree->document.GetRootNode().CreateChild(kProperty, nullptr);
    while (element.DeleteChild(WXPath(L"*"))) { }
    element.Attribute(kName).SetString(property.name);
    element.Attribute(kType).SetString(row->name);
    return row->write(element, value);
}

bool Container::SetStringMetadata(const Definition& property, const TvlString& language, const TvlString& text)
{
    if (property.type == Type::Text)
        return SetMetadata(property, text);
    auto texts = GetMetadata(property).GetOr(MultiLanguageString());
    texts.SetLangString(language, text);
    return SetMetadata(property, texts);
}

Any Container::GetMetadata(const Definition& property) const
{
    const WXmlNode element = FindProperty(m_tree->document, property);
    if (!element)
        return {};
    const TvlString type = element.Attribute(kType).GetString(L"");
    for (const TypeRow& row : kTypes)
        if (type == row.name)
            return row.read(element);
    return {};
}

bool Container::IsChanged() const
{
    if (!m_tree->isTouched)
        return false;
    WXmlDoc document(false);
    return m_tree->original.empty() || !document.LoadBytes(m_tree->original)
        || document.SaveBytes() != m_tree->document.SaveBytes();
}

bool Container::FromBytes(const std::string& bytes)
{
    m_tree->isTouched = false;
    const bool isRead =
        m_tree->document.LoadBytes(bytes) && m_tree->document.GetNodes(WXPath(TvlString(L"/") + kRoot)).Count() == 1;
    if (isRead)
        m_tree->original = bytes;
    else
        m_tree->MakeEmpty();
    return isRead;
}

std::string Container::ToBytes() const { return m_tree->document.SaveBytes(); }

}   // namespace Metadata

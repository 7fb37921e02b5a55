// Changes of a document: what there is no memory for is told, since the document is saved over a user's file.
#include "HeapOperation.h"
#include "siblings/TvlXml/WXmlWriters.h"

#include <gtest/gtest.h>

namespace {
// pugixml takes memory in pages of 32 KB: what fits in none of them needs memory of its own.
constexpr std::size_t kLong = 40000;
const TvlString& LongText()
{
    static const TvlString text{std::wstring(kLong, L'x')};
    return text;
}
const std::wstring& LongName()
{
    static const std::wstring name(kLong, L'n');
    return name;
}
const wchar_t* Name() { return LongName().c_str(); }
const char* NarrowName()
{
    static const std::string name(kLong, 'n');
    return name.c_str();
}

constexpr const char* kBefore = "<root><given a=\"1\">text</given><empty/><list><item b=\"1\"/></list></root>";

struct Change {
    const char* name;
    void (*make)(const WXmlNode& root);   // may be made again
    bool leavesOldOnes = true;            // what fails half way has changed nothing
};

constexpr Change kChanges[] = {
    {"child",
        [](const WXmlNode& root) {
            root.DeleteChild(WXPath(Name()));
            root.CreateChild(Name(), nullptr);
        }},
    {"child_with_text",
        [](const WXmlNode& root) {
            root.DeleteChild(WXPath(L"child"));
            root.CreateChild(L"child", LongText().c_str());
        }},
    {"new_attribute", [](const WXmlNode& root) { root.Attribute(Name()).SetString(LongText()); }},
    {"attribute", [](const WXmlNode& root) { root.GetNode(WXPath(L"given")).Attribute(L"a").SetString(LongText()); }},
    {"new_text", [](const WXmlNode& root) { root.GetNode(WXPath(L"empty")).Value().SetString(LongText()); }},
    {"text", [](const WXmlNode& root) { root.GetNode(WXPath(L"given")).Value().SetString(LongText()); }},
    {"attribute_writer",
        [](const WXmlNode& root) {
            WXmlAttributeWriter values(root.GetNode(WXPath(L"given")));
            values.SetInt(NarrowName(), 1);
            values.SetString("a", LongText());
        },
        false},
    {"list_writer",
        [](const WXmlNode& root) {
            WXmlListWriter list(root, Name(), Name());
            list.Next();
            WXmlAttributeWriter(list.Next()).SetString("name", LongText());
        },
        false},
};

struct Document {
    Document() { EXPECT_TRUE(document.LoadBytes(kBefore)); }

    WXmlDoc document{false};
};

HeapOperation RowOf(const Change& change)
{
    return {change.name, [change] {
                const auto state = std::make_shared<Document>();
                Document whole;
                const std::string before = whole.document.SaveBytes();
                change.make(whole.document.GetRootNode());
                return HeapTrial{[change, state] { change.make(state->document.GetRootNode()); }, [] { return false; },
                    [change, state, before, after = whole.document.SaveBytes()](const HeapRun& run) {
                        const std::string now = state->document.SaveBytes();
                        EXPECT_TRUE(now == after || run.hasFailed);
                        EXPECT_TRUE(now == after || now == before || !change.leavesOldOnes);
                    }};
            }};
}
}   // namespace

HeapOperations XmlOperations()
{
    HeapOperations rows;
    for (const Change& change : kChanges)
        rows.push_back(RowOf(change));
    return rows;
}

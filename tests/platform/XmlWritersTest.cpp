// Lists written over those that stand in a document: the document is the same as if they had been made anew.
#include "ChildProcess.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlXml/WXmlWriters.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {

/// Two items are written to a document; returns the file that it makes.
std::string Rewritten(const std::string& before)
{
    const ScratchFolder folder;
    const auto path = TvlUtils::SystemIO::FromFilePath(folder.Path() / "list.xml");
    std::ofstream(folder.Path() / "list.xml", std::ios::binary) << before;
    WXmlDoc document(false);
    EXPECT_TRUE(document.Load(path));
    {
        WXmlListWriter list(document.GetRootNode(), L"list", L"item");
        for (const int id : {1, 2}) {
            const WXmlNode item = list.Next();
            WXmlAttributeWriter values(item);
            values.SetInt("id", id);
            values.SetString("name", L"Gr\u00f6\u00dfe");
            values.SetDouble("width", 8.5);
            values.SetInt("dpi", 0, 0);
            values.SetBool("hidden", id == 2, false);
        }
    }
    EXPECT_TRUE(document.Save(path));
    return FileBytes(folder.Path() / "list.xml");
}

TEST(XmlWriters, LeaveWhatAListMadeAnewWouldBe)
{
    const std::string head = "<?xml version=\"1.0\"?>\n<root>\n\t<other />\n\t<list>\n";
    const std::string items = "\t\t<item id=\"1\" name=\"Gr\xC3\xB6\xC3\x9F"
                              "e\" width=\"8.5\" />\n"
                              "\t\t<item id=\"2\" name=\"Gr\xC3\xB6\xC3\x9F"
                              "e\" width=\"8.5\" hidden=\"true\" />\n";
    const std::string expected = head + items + "\t</list>\n</root>\n";
    const std::string cases[] = {
        "<root><other/></root>",
        "<root><list/><other/></root>",
        expected,
        "<root><list>" + items + items + "</list><other/></root>",
        // Attributes too many, in another order, twice, of the default; an item that holds something.
        "<root><list a='b'><item name='x' id='1'/><item id='1' id='2' dpi='0' hidden='false' "
        "z='1'/></list><other/></root>",
        "<root><list>text<item id='1'><deep/></item><thing/><item>text</item><item/></list><other/></root>",
    };
    for (const std::string& before : cases) {
        SCOPED_TRACE(before);
        EXPECT_EQ(Rewritten(before), expected);
    }
}

TEST(XmlAttributes, AreReadInAnyOrderAndNumber)
{
    const ScratchFolder folder;
    std::string text = "<root first='1'";
    for (int i = 0; i < 20; ++i)
        text += " a" + std::to_string(i) + "='" + std::to_string(i * i) + "'";
    std::ofstream(folder.Path() / "many.xml", std::ios::binary) << text << " on=' true ' width='+2.5'/>";
    WXmlDoc document(false);
    ASSERT_TRUE(document.Load(TvlUtils::SystemIO::FromFilePath(folder.Path() / "many.xml")));
    const WXmlNode root = document.GetRootNode();
    const WXmlAttributes values(root);
    for (const int i : {0, 1, 2, 19, 14, 15, 16, 3, 0}) {
        EXPECT_EQ(values.GetInt("a" + std::to_string(i), -1), i * i);
        EXPECT_EQ(root.Attribute((L"a" + std::to_wstring(i)).c_str()).GetInt(-1), i * i);
    }
    EXPECT_TRUE(values.GetBool("on", false));
    EXPECT_EQ(values.GetDouble("width", 0.0), 2.5);
    EXPECT_EQ(values.GetInt("width", -7), -7);
    EXPECT_FALSE(values.Exists("a"));
    EXPECT_EQ(values.GetUtf8("b", "none"), "none");
}

}   // namespace

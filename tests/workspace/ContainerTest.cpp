// Containers of documents: properties, streams, and what becomes of entries when they are closed.
#include "WorkspaceWorld.h"
#include "siblings/TvrContainer/TvrContainer.h"

using TvlUtils::Guid;
namespace Properties = ZipContainerSchema::Metadata;

namespace {

class Containers : public WorkspaceWorld {
protected:
    static WorkspaceContainer Write(const TvlString& path)
    {
        return WorkspaceContainer::Open(path, ZipFile::OpenMode::ReadWrite);
    }
};

TEST_F(Containers, KeepPropertiesOfEveryType)
{
    const TvlString path = Make("template.tvws", {});
    auto writer = Write(path);
    EXPECT_TRUE(writer.SetStringMetadata(Properties::ContentUniqueName, L"en", L"unique"));
    EXPECT_TRUE(writer.SetStringMetadata(Properties::ContentUniqueName, L"de", L"line\nbreak & \"quote\""));
    EXPECT_TRUE(writer.SetMetadata(Properties::FromTovelLibrary, true));
    EXPECT_TRUE(writer.SetStringMetadata(TvrSchema::Metadata::PageSizeName, L"en", L"A4"));
    EXPECT_TRUE(writer.SetMetadata(Properties::DerivedFrom, std::vector<Guid>(3)));
    EXPECT_TRUE(writer.SetMetadata(Properties::Category, MultiLanguageString(L"gone")));
    EXPECT_TRUE(writer.SetMetadata(Properties::Category, {}));
    EXPECT_TRUE(writer.Close());

    const auto reader = TvrContainer::Open(path, ZipFile::OpenMode::Read, nullptr, Tvl::PathResolver(), false, true);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader.GetStringMetadata(Properties::ContentUniqueName, L"de"), TvlString(L"line\nbreak & \"quote\""));
    EXPECT_EQ(reader.GetStringMetadata(Properties::ContentUniqueName, L"fr"), TvlString(L"unique"));
    EXPECT_EQ(reader.GetStringMetadata(TvrSchema::Metadata::PageSizeName), TvlString(L"A4"));
    EXPECT_EQ(reader.GetStringMetadata(Properties::FromTovelLibrary), TvlString());
    EXPECT_TRUE(reader.GetMetadata(Properties::FromTovelLibrary).GetOr(false));
    EXPECT_EQ(reader.GetMetadata(Properties::FromTovelLibrary).Get<int>(), nullptr);
    EXPECT_EQ(reader.GetMetadata(Properties::DerivedFrom).GetOr(std::vector<Guid>()).size(), 3u);
    EXPECT_FALSE(reader.GetMetadata(Properties::Category).HasValue());
    const auto none = TvrContainer::Open(L"none", ZipFile::OpenMode::Read, nullptr, Tvl::PathResolver(), false, true);
    EXPECT_FALSE(none.GetMetadata(Properties::FromTovelLibrary).HasValue());
}

TEST_F(Containers, TakeBrokenPropertiesForNone)
{
    for (const std::string bytes : {"", "<metadata", "<other/>", "<metadata><property name='UIOrder'/></metadata>",
             "<metadata><property name='UIOrder' type='integer' value='x'/></metadata>",
             "<metadata><property name='UIOrder' type='boolean' value='2'/></metadata>"}) {
        const TvlString path = Make("a.tvws", {});
        auto writer = Write(path);
        EXPECT_TRUE(writer.AddFile(ZipContainerSchema::metadataFile, StreamOf(bytes), false, nullptr));
        EXPECT_TRUE(writer.Close());
        EXPECT_EQ(WorkspaceFile(path).GetUIOrder(), 200) << bytes;
        EXPECT_FALSE(WorkspaceFile(path).GetInstanceID().IsNil());
    }
}

TEST_F(Containers, LeaveEntriesAloneThatNobodyHasFinished)
{
    const TvlString path = Make("a.tvws", {{L"content/a", "old a"}, {L"content/b", "old b"}});
    auto writer = Write(path);
    writer.SetMaxEntryBytes(10);
    EXPECT_FALSE(writer.CreateFileW(L"content/a", false, false, nullptr).Write("more than ten", 13));
    TvlUtils::Stream unwritten = writer.CreateFileW(L"content/b", false, false, nullptr);
    EXPECT_TRUE(writer.CreateFileW(L"content/c", false, false, nullptr).Write("c", 1));
    EXPECT_EQ(writer.GetFileNames(L"content/.*", true).size(), 3u);
    EXPECT_FALSE(writer.CreateFileW(L"content/", false, false, nullptr));
    EXPECT_FALSE(writer.CreateFileW(L"C:/a", false, false, nullptr));
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(Entry(path, L"content/a"), "old a");
    EXPECT_EQ(Entry(path, L"content/b"), "old b");
    EXPECT_EQ(Entry(path, L"content/c"), "c");
    EXPECT_FALSE(WorkspaceContainer::Open(path, ZipFile::OpenMode::Read).DeleteFileW(L"content/a"));
    EXPECT_FALSE(writer.DoesFileExist(L"content/a")) << "it is closed";
}

TEST_F(Containers, OutliveTheirLastEntry)
{
    const TvlString path = Make("a.tvws", {{L"content/a", "a"}});
    auto writer = Write(path);
    EXPECT_TRUE(writer.DeleteFileW(L"content/a"));
    EXPECT_TRUE(writer.DeleteFileW(ZipContainerSchema::metadataFile));
    EXPECT_TRUE(writer.Close());
    EXPECT_TRUE(WorkspaceContainer::Open(path, ZipFile::OpenMode::Read));
}

TEST_F(Containers, RememberTheirAncestorsOnce)
{
    const Guid one = Guid::Generate();
    const Guid two = Guid::Generate();
    auto list = DocContainer::AddToDerivedFromList({}, one);
    list = DocContainer::AddToDerivedFromList(list, two);
    list = DocContainer::AddToDerivedFromList(list, one);
    EXPECT_EQ(list, (std::vector{two, one}));
    EXPECT_EQ(DocContainer::AddToDerivedFromList(list, Guid()), list);
}

TEST(Guids, AreReadInEveryForm)
{
    const Guid guid = Guid::Generate();
    EXPECT_EQ(Guid(guid.ToString()), guid);
    EXPECT_EQ(Guid(L"{" + guid.ToString() + L"}"), guid);
    EXPECT_EQ(
        Guid(L"44E925CC-890C-49B2-8FFB-5407CD23FD88").ToString(), TvlString(L"44e925cc-890c-49b2-8ffb-5407cd23fd88"));
    for (const wchar_t* const text :
        {L"", L"{44e925cc-890c-49b2-8ffb-5407cd23fd88", L"44e925cc890c49b28ffb5407cd23fd88",
            L"44e925cc-890c-49b2-8ffb-5407cd23fd8g", L"44e925cc-890c-49b2-8ffb_5407cd23fd88"})
        EXPECT_TRUE(Guid(text).IsNil()) << text;
}

}   // namespace

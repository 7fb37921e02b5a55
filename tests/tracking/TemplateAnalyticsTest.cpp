// What is told of the template of a new document.
#include "TemplateAnalytics.h"

#include "RecordingApplication.h"
#include "UserWorld.h"
#include "siblings/TvlConfig/EventDescriptions.h"
#include "siblings/TvlUtils/MultiLanguageString.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using ProductAnalytics::Helpers::GetTemplateTrackData;
using Properties = RecordingApplication::Properties;
namespace Schema = ZipContainerSchema::Metadata;

using Value = TvlUtils::Any (*)();
TvlUtils::Any Yes() { return true; }
TvlUtils::Any No() { return false; }
TvlUtils::Any YesAsText() { return TvlString(L"true"); }
TvlUtils::Any YesAsNumber() { return 1; }

/// Metadata of a template.
struct Template {
    Value fromLibrary = nullptr;
    const wchar_t* name = L"";   // in English
    const wchar_t* category = L"";
    const wchar_t* pageSize = L"";

    void Write(const TvlString& path) const
    {
        // Every container of the suite keeps its metadata alike.
        WorkspaceContainer file = WorkspaceContainer::Create(path);
        file.SetMetadata(Schema::DocumentID, TvlUtils::Guid::Generate());
        if (fromLibrary)
            file.SetMetadata(Schema::FromTovelLibrary, fromLibrary());
        if (*name)
            file.SetStringMetadata(Schema::ContentUniqueName, L"en", name);
        if (*category)
            file.SetStringMetadata(Schema::Category, L"en", category);
        if (*pageSize)
            file.SetMetadata(TvrSchema::Metadata::PageSizeName, TvlString(pageSize));
        ASSERT_TRUE(file.Close());
    }
};

class TemplateAnalytics : public testing::Test {
protected:
    TemplateAnalytics()
    {
        document.statistics = {{DocumentStatistic::PageCount, 3}, {DocumentStatistic::ColorMode, TvlString(L"RGB")}};
    }
    /// What is told, without what the document tells of itself.
    Properties Told(const TvlString& path, bool multipageView = false)
    {
        Properties told;
        for (const auto& [name, value] : GetTemplateTrackData(&document, path, multipageView))
            told.emplace(std::wstring_view(name), value.Std());
        EXPECT_EQ(
            told.erase(L"document.pages") + told.erase(L"document.layers") + told.erase(L"document.color-mode"), 3u);
        return told;
    }

    UserWorld world;
    FakeDocument document;
};

TEST_F(TemplateAnalytics, TellsLibraryTemplatesFromOthers)
{
    struct Row {
        Template metadata;
        Properties told;
    };
    const auto told = [](const wchar_t* location, const wchar_t* pageSize, Properties more) {
        more.insert({{L"document.template", L"true"}, {L"document.template-location", location},
            {L"document.template-pagesize", pageSize}, {L"document.multipage-view", L"false"}});
        return more;
    };
    const auto ofOwn = [&](const wchar_t* pageSize) {
        return told(L"local", pageSize, {{L"document.template-name", L"N/A"}, {L"document.template-category", L"N/A"}});
    };
    const Row rows[] = {
        {{Yes, L"flyer-01", L"Flyers", L"A4"},
            told(L"cloud", L"A4",
                {{L"document.template-name", L"flyer-01"}, {L"document.template-category", L"Flyers"}})},
        {{Yes, L"flyer-02", L"", L""}, told(L"cloud", L"Custom", {{L"document.template-name", L"flyer-02"}})},
        {{Yes, L"", L"Flyers", L""}, told(L"cloud", L"Custom", {{L"document.template-category", L"Flyers"}})},
        {{No, L"flyer-01", L"Flyers", L"A4"}, ofOwn(L"A4")},
        {{YesAsText, L"flyer-01", L"Flyers", L""}, ofOwn(L"Custom")},
        {{YesAsNumber, L"", L"", L""}, ofOwn(L"Custom")},
        {{}, ofOwn(L"Custom")},
    };
    int number = 0;
    for (const Row& row : rows) {
        const TvlString path = world.Path("template" + std::to_string(++number) + ".tvrt");
        row.metadata.Write(path);
        EXPECT_EQ(Told(path), row.told) << number;
    }
}

TEST_F(TemplateAnalytics, ATemplateThatFailsToOpenCountsAsTheUsersOwn)
{
    for (const TvlString& path : {world.Path("none.tvrt"), world.MakeFile("odd.tvrt", "no zip file"), TvlString()}) {
        const Properties told = Told(path, true);
        EXPECT_EQ(told.at(L"document.template-location"), L"local");
        EXPECT_EQ(told.at(L"document.template-name"), L"N/A");
        EXPECT_EQ(told.at(L"document.template-pagesize"), L"Custom");
        EXPECT_EQ(told.at(L"document.multipage-view"), L"true");
    }
}

TEST_F(TemplateAnalytics, WithoutADocumentNothingIsTold)
{
    const TvlString path = world.Path("a.tvrt");
    Template{Yes, L"flyer", L"", L""}.Write(path);
    EXPECT_TRUE(GetTemplateTrackData(nullptr, path, true).empty());
}

TEST_F(TemplateAnalytics, EveryPropertyIsDescribed)
{
    const auto events = ProductAnalytics::DescribeEvents();
    const auto ofApplication =
        std::find_if(events.begin(), events.end(), [](const auto& event) { return !*event.event; });
    ASSERT_NE(ofApplication, events.end());
    for (const auto& [name, value] : GetTemplateTrackData(&document, world.Path("none.tvrt"), true))
        EXPECT_TRUE(std::any_of(ofApplication->properties.begin(), ofApplication->properties.end(),
            [&](const auto& property) { return name.Compare(property.name) == 0; }))
            << std::wstring(std::wstring_view(name));
}

}   // namespace

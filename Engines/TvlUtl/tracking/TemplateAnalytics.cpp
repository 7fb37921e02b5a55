#include "TemplateAnalytics.h"

#include "siblings/TvlConfig/PropertyGroups.h"
#include "siblings/TvlUtils/String.h"
#include "siblings/TvrContainer/TvrContainer.h"

namespace ProductAnalytics::Helpers {

namespace {
using TvlUtils::String::ToStringW;

constexpr PropertyDescription kTemplate{L"document.template", L"\"true\": the document was made from a template"};
constexpr PropertyDescription kName{
    L"document.template-name", L"the template's name in the content library, \"N/A\" for the user's own"};
constexpr PropertyDescription kLocation{
    L"document.template-location", L"\"cloud\" for the content library, \"local\" for the user's own"};
constexpr PropertyDescription kCategory{
    L"document.template-category", L"the template's category in the library, \"N/A\" for the user's own"};
constexpr PropertyDescription kPageSize{
    L"document.template-pagesize", L"name of the template's page size, or \"Custom\""};
constexpr PropertyDescription kMultipage{
    L"document.multipage-view", L"whether the document shows several pages at once, \"true\" or \"false\""};

/// Sets a property of a template of the content library, which has it unless its text is empty, or of another one.
void SetOfLibrary(PropertyMap& map, const PropertyDescription& property, bool isOfLibrary, const TvlString& text)
{
    if (!isOfLibrary)
        map[property.name] = L"N/A";
    else if (!text.IsEmpty())
        map[property.name] = text;
}

std::vector<EventDescription> Describe()
{
    EventDescription description{L"", L"a document was made from a template: sent by the application", {}};
    const auto document = DescribeGroup(PropertyGroup::Document);
    description.properties.assign(document.begin(), document.end());
    description.properties.insert(
        description.properties.end(), {kTemplate, kName, kLocation, kCategory, kPageSize, kMultipage});
    return {std::move(description)};
}

const EventDescriber describer(Describe);
}   // namespace

PropertyMap GetTemplateTrackData(ITovelCmn_Doc* document, const TvlStringT<wchar_t>& templatePath, bool multipageView)
{
    PropertyMap map;
    if (!document)
        return map;
    AddDocumentProperties(map, *document);
    map[kTemplate.name] = ToStringW(true);
    const TvrContainer container =
        TvrContainer::Open(templatePath, ZipFile::OpenMode::Read, nullptr, Tvl::PathResolver(), false, true);

    namespace Schema = ZipContainerSchema::Metadata;
    const bool isOfLibrary = container.GetMetadata(Schema::FromTovelLibrary).GetOr(false);
    SetOfLibrary(map, kName, isOfLibrary, container.GetStringMetadata(Schema::ContentUniqueName, L"en"));
    map[kLocation.name] = isOfLibrary ? L"cloud" : L"local";
    SetOfLibrary(map, kCategory, isOfLibrary, container.GetStringMetadata(Schema::Category));
    const TvlString pageSize = container.GetStringMetadata(TvrSchema::Metadata::PageSizeName);
    map[kPageSize.name] = pageSize.IsEmpty() ? TvlString(L"Custom") : pageSize;
    map[kMultipage.name] = ToStringW(multipageView);
    return map;
}

}   // namespace ProductAnalytics::Helpers

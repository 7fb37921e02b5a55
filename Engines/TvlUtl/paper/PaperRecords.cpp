// Papers in the file.
#include "PaperKeys.h"
#include "X64Integers.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlXml/WXmlWriters.h"

#include <algorithm>
#include <string_view>

namespace {
constexpr int kInch = 1;
constexpr int kMillimetre = 2;
constexpr int kPixel = 6;
constexpr double kBasePerInch = 254000.0;
constexpr double kBasePerMillimetre = 10000.0;
constexpr int kDefaultDpi = 96;

std::int32_t Rounded(double value) { return ToInt32AsX64(value + 0.5); }

/// A product of 32 bits, as documents hold it: what is above them is lost.
std::int32_t Product(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

/// Whether a text is this one of lower case ASCII letters, in whatever case.
bool IsName(std::string_view text, std::string_view name)
{
    return std::equal(text.begin(), text.end(), name.begin(), name.end(),
        [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

/// WUnit id of a unit's name in the file; 0 for a name of none.
int UnitsOf(std::string_view name)
{
    return IsName(name, "in") ? kInch : IsName(name, "mm") ? kMillimetre : IsName(name, "px") ? kPixel : 0;
}

void SetSize(PaperTypeInformation& paper, double width, double height, int dpi)
{
    double factor = paper.Units == kMillimetre ? kBasePerMillimetre : kBasePerInch;
    double divisor = 1.0;
    if (paper.Units == kPixel) {
        divisor = dpi;
        paper.ResolutionX = paper.ResolutionY = Rounded(Product(dpi, 100000) / 2.54);
    }
    paper.Width = Rounded(width * factor / divisor);
    paper.Height = Rounded(height * factor / divisor);
}
}   // namespace

bool CPaperTypeMgr::ReadPaper(const WXmlNode& node, PaperTypeInformation& paper, bool custom) const
{
    const WXmlAttributes values(node);   // asked in the order of the file
    const int id = values.GetInt("id", -1);
    if (!custom && static_cast<unsigned>(id) >= kPaperTypeCount)
        return false;
    paper.Type = custom ? kPaperCustom : static_cast<PaperType>(id);
    if (custom && values.Exists("customid"))
        paper.CustomId = values.GetInt("customid", 0);
    const bool isNamed = values.Exists("name");
    paper.SourceName = TvlPlatform::FromUtf8(values.GetUtf8("name", "Custom"));
    paper.DisplayName = custom && isNamed ? paper.SourceName : PaperName(paper.Type);
    paper.PaperGuid = TvlUtils::Guid::Generate().ToString();

    const double width = values.GetDouble("width", 0.0);
    const double height = values.GetDouble("height", 0.0);
    paper.Units = UnitsOf(values.GetUtf8("units", "in"));
    paper.Rotatable = !values.GetBool("fixedorientation", false);
    const int dpi = values.GetInt("dpi", kDefaultDpi);
    if (width < 0.0 || height < 0.0 || paper.Units == 0 || dpi <= 0)
        return false;
    SetSize(paper, width, height, dpi);
    if (!custom)
        paper.Hidden = values.GetBool("hidden", false);
    return true;
}

bool CPaperTypeMgr::WritePaper(const PaperTypeInformation& paper, const WXmlNode& node, bool custom) const
{
    struct Form {
        const wchar_t* units = L"mm";
        double width;
        double height;
        int dpi = 0;
    };
    Form form{.width = paper.Width / kBasePerMillimetre, .height = paper.Height / kBasePerMillimetre};
    if (paper.Units == kInch)
        form = {L"in", paper.Width / kBasePerInch, paper.Height / kBasePerInch};
    if (paper.Units == kPixel) {
        const int dpi = Rounded(paper.ResolutionX * 2.54 / 100000.0);
        form = {L"px", Product(dpi, paper.Width) / kBasePerInch, Product(dpi, paper.Height) / kBasePerInch, dpi};
    }

    const int id = custom ? 0 : paper.Type;
    WXmlAttributeWriter values(node);
    values.SetInt("id", id);
    values.SetInt("customid", paper.CustomId);   // 0 for a predefined paper
    values.SetString("name", paper.DisplayName);
    values.SetInt("nameid", id);
    values.SetDouble("width", form.width);
    values.SetDouble("height", form.height);
    values.SetString("units", form.units);
    // What equals its default is left out; a reader would refuse a resolution of 0.
    values.SetBool("fixedorientation", !paper.Rotatable, false);
    values.SetInt("dpi", form.dpi, 0);
    if (!custom)
        values.SetBool("hidden", paper.Hidden, false);
    return true;
}

void CPaperTypeMgr::ReadPaperArrayFromXml(
    const WXmlDoc& document, const TvlString& path, std::vector<PaperTypeInformation>& papers, bool custom) const
{
    papers.clear();
    for (const WXmlNode& node : document.GetNodes(WXPath(path))) {
        PaperTypeInformation paper;
        if (ReadPaper(node, paper, custom))
            papers.push_back(std::move(paper));
    }
}

bool CPaperTypeMgr::WritePaperArrayToXml(
    WXmlDoc& document, const wchar_t* name, const std::vector<PaperTypeInformation>& papers, bool custom) const
{
    return document.IsLoaded() && WritePapers(document, name, papers, custom);
}

bool CPaperTypeMgr::WritePapers(
    WXmlDoc& document, const wchar_t* name, std::span<const PaperTypeInformation> papers, bool custom) const
{
    WXmlListWriter list(document.GetRootNode(), name, L"size");
    return std::all_of(papers.begin(), papers.end(),
        [&](const PaperTypeInformation& paper) { return WritePaper(paper, list.Next(), custom); });
}

// Papers in the file.
#include "PaperKeys.h"
#include "X64Integers.h"

#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlXml/WXmlDoc.h"

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

/// WUnit id of a unit's name in the file; 0 for none.
int UnitsOf(const TvlString& name)
{
    if (name.CompareNoCase(L"in") == 0)
        return kInch;
    if (name.CompareNoCase(L"mm") == 0)
        return kMillimetre;
    return name.CompareNoCase(L"px") == 0 ? kPixel : 0;
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
    using Framework::Resources::GetString;
    if (custom) {
        paper.Type = kPaperCustom;
        if (const auto id = node.Attribute(L"customid"); id.Exists())
            paper.CustomId = id.GetInt();
        const auto name = node.Attribute(L"name");
        paper.DisplayName = name.Exists() ? name.GetString(L"") : GetString(PaperNameKey(kPaperCustom));
    } else {
        const int id = node.Attribute(L"id").GetInt(-1);
        if (static_cast<unsigned>(id) >= kPaperTypeCount)
            return false;
        paper.Type = static_cast<PaperType>(id);
        paper.DisplayName = GetString(PaperNameKey(paper.Type));
    }
    paper.SourceName = node.Attribute(L"name").GetString(L"Custom");
    paper.PaperGuid = TvlUtils::Guid::Generate().ToString();

    const double width = node.Attribute(L"width").GetDouble(0.0);
    const double height = node.Attribute(L"height").GetDouble(0.0);
    paper.Units = UnitsOf(node.Attribute(L"units").GetString(L"in"));
    paper.Rotatable = !node.Attribute(L"fixedorientation").GetBool(false);
    const int dpi = node.Attribute(L"dpi").GetInt(kDefaultDpi);
    if (width < 0.0 || height < 0.0 || paper.Units == 0 || dpi <= 0)
        return false;
    SetSize(paper, width, height, dpi);
    if (!custom)
        paper.Hidden = node.Attribute(L"hidden").GetBool(false);
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
    node.Attribute(L"id").SetInt(id);
    if (custom)
        node.Attribute(L"customid").SetInt(paper.CustomId);
    node.Attribute(L"name").SetString(paper.DisplayName);
    node.Attribute(L"nameid").SetInt(id);
    node.Attribute(L"width").SetDouble(form.width);
    node.Attribute(L"height").SetDouble(form.height);
    node.Attribute(L"units").SetString(form.units);
    // What equals its default is left out; a reader would refuse a resolution of 0.
    node.Attribute(L"fixedorientation").SetBool(!paper.Rotatable, false);
    node.Attribute(L"dpi").SetInt(form.dpi, 0);
    if (!custom)
        node.Attribute(L"hidden").SetBool(paper.Hidden, false);
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
    if (!document.IsLoaded())
        return false;
    const WXmlNode root = document.GetRootNode();
    root.DeleteChild(WXPath(name));
    const WXmlNode list = root.CreateChild(name, nullptr);
    for (const PaperTypeInformation& paper : papers)
        if (!WritePaper(paper, list.CreateChild(L"size", nullptr), custom))
            return false;
    return true;
}

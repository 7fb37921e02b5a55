#include "PaperLint.h"

#include "PaperTypes.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <cmath>

namespace {
// What 32 bits hold: inches in tenths of a micron, pixels times that when they are written, and a resolution by kilometres.
constexpr double kLargestInches = 8454.0;
constexpr double kMostPixels = 8454.0;
constexpr int kLargestDpi = 21474;

struct Lint {
    std::size_t sizes = 0;    // number of predefined papers
    std::size_t papers = 0;   // of all
    std::vector<std::string> faults;
    std::vector<int> counts = std::vector<int>(kPaperTypeCount);   // of each id

    void Fault(const std::string& where, const std::string& what) { faults.push_back(where + ": " + what); }
    void CheckId(const std::string& where, const WXmlNode& size);
    void CheckSize(const std::string& where, const WXmlNode& size);
    void CheckLists(const WXmlDoc& document);
};

std::string Text(const WXmlNode& node, const wchar_t* attribute)
{
    return TvlPlatform::ToUtf8(node.Attribute(attribute).GetString(L""));
}

void Lint::CheckId(const std::string& where, const WXmlNode& size)
{
    const int id = size.Attribute(L"id").GetInt(-1);
    if (static_cast<unsigned>(id) >= kPaperTypeCount)
        return Fault(where, "the id \"" + Text(size, L"id") + "\" is none of 0 to 148");
    if (++counts[static_cast<std::size_t>(id)] == 2)
        Fault(where, "the id " + std::to_string(id) + " stands there twice");
    if (static_cast<std::size_t>(id) >= sizes)
        Fault(where, "the id " + std::to_string(id) + " is beyond the number of papers, " + std::to_string(sizes));
}

void Lint::CheckSize(const std::string& where, const WXmlNode& size)
{
    const TvlString units = size.Attribute(L"units").GetString(L"in");
    const bool isInch = units.CompareNoCase(L"in") == 0;
    const bool isPixel = units.CompareNoCase(L"px") == 0;
    if (!isInch && !isPixel && units.CompareNoCase(L"mm") != 0)
        Fault(where, "the unit \"" + TvlPlatform::ToUtf8(units) + "\" is none of in, mm and px");
    const int dpi = size.Attribute(L"dpi").GetInt(96);
    if (dpi <= 0)
        Fault(where, "the resolution " + std::to_string(dpi) + " is not above 0");
    if (dpi > kLargestDpi)
        Fault(where, "the resolution " + std::to_string(dpi) + " is out of range");
    const double perInch = isInch ? 1.0 : isPixel ? std::max(dpi, 1) : 25.4;
    for (const wchar_t* side : {L"width", L"height"}) {
        const double length = size.Attribute(side).GetDouble(std::nan(""));
        if (std::isnan(length))
            Fault(where, "the " + TvlPlatform::ToUtf8(side) + " \"" + Text(size, side) + "\" is no number");
        else if (length < 0.0 || length / perInch > kLargestInches || (isPixel && length > kMostPixels))
            Fault(where, "the " + TvlPlatform::ToUtf8(side) + " " + Text(size, side) + " is out of range");
    }
}

void Lint::CheckLists(const WXmlDoc& document)
{
    for (const WXmlNode& set : document.GetNodes(WXPath(L"/PageSizes/pageset")))
        for (const wchar_t* list : {L"order/*", L"mru/*"}) {
            WXmlNodeList pages;
            set.GetNodes(WXPath(list), pages);
            for (const WXmlNode& page : pages)
                if (const int place = page.Value().GetInt(-1); place < 0 || static_cast<std::size_t>(place) >= papers)
                    Fault("pageset " + Text(set, L"system"),
                        "\"" + TvlPlatform::ToUtf8(page.Value().GetString(L"")) + "\" is no place of a paper");
        }
    for (const wchar_t* system : {L"metric", L"imperial"})
        if (!document.GetRootNode().DoesNodeExist(WXPath(L"/PageSizes/pageset[@system='" + TvlString(system) + L"']")))
            Fault("PageSizes", "the pageset \"" + TvlPlatform::ToUtf8(system) + "\" is missing");
}
}   // namespace

std::vector<std::string> LintPapers(const std::string& path)
{
    WXmlDoc document(false);
    if (!document.Load(TvlPlatform::FromUtf8(path)))
        return {"the file can't be read as XML"};
    const WXmlNodeList sizes = document.GetNodes(WXPath(L"/PageSizes/sizes/*"));
    const WXmlNodeList customSizes = document.GetNodes(WXPath(L"/PageSizes/CustomPageSizes/*"));
    Lint lint;
    lint.sizes = sizes.Count();
    lint.papers = sizes.Count() + customSizes.Count();
    for (std::size_t i = 0; i < sizes.Count(); ++i) {
        const std::string where = "size " + std::to_string(i + 1) + " (" + Text(sizes.Node(i), L"name") + ")";
        lint.CheckId(where, sizes.Node(i));
        lint.CheckSize(where, sizes.Node(i));
    }
    for (int id = 0; id < kPaperTypeCount; ++id)
        if (lint.counts[static_cast<std::size_t>(id)] == 0)
            lint.Fault("sizes", "the id " + std::to_string(id) + " is missing");
    for (const WXmlNode& size : customSizes)
        lint.CheckSize("custom size (" + Text(size, L"name") + ")", size);
    lint.CheckLists(document);
    return lint.faults;
}

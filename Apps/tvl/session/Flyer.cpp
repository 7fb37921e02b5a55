#include "Flyer.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <algorithm>
#include <sstream>

using TvlUtl::IDuplicatable;
using TvlUtl::IDuplicationContext;
namespace SystemIO = TvlUtils::SystemIO;

namespace {
constexpr double kTenthsOfMicronPerMillimetre = 10000.0;

/// A length in millimetres, with a point in every locale, and back.
std::string Millimetres(double length)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(15);
    text << length / kTenthsOfMicronPerMillimetre;
    return text.str();
}

double Length(const WXmlNode& node, const wchar_t* attribute)
{
    return node.Attribute(attribute).GetDouble(0.0) * kTenthsOfMicronPerMillimetre;
}

std::string FrameText(const Frame& frame)
{
    return "    <rect id=\"" + frame.name + "\" x=\"" + Millimetres(frame.x) + "\" y=\"" + Millimetres(frame.y)
        + "\" width=\"" + Millimetres(frame.width) + "\" height=\"" + Millimetres(frame.height) + "\""
        + (frame.next ? " data-next=\"" + frame.next->name + "\"" : "") + " fill=\"none\" stroke=\"black\"/>\n";
}

std::unique_ptr<Page> ReadPage(const WXmlNode& node, const WXmlNode& root)
{
    auto page = std::make_unique<Page>();
    page->width = static_cast<int>(Length(root, L"data-width"));
    page->height = static_cast<int>(Length(root, L"data-height"));
    WXmlNodeList rects;
    node.GetNodes(WXPath(L"rect"), rects);
    for (const WXmlNode& rect : rects) {
        Frame& frame = page->Add(TvlPlatform::ToUtf8(rect.Attribute(L"id").GetString(L"")));
        frame.x = Length(rect, L"x");
        frame.y = Length(rect, L"y");
        frame.width = Length(rect, L"width");
        frame.height = Length(rect, L"height");
    }
    for (std::size_t i = 0; i < rects.Count(); ++i)
        page->frames[i]->next = page->Find(TvlPlatform::ToUtf8(rects.Node(i).Attribute(L"data-next").GetString(L"")));
    return page;
}
}   // namespace

IDuplicatable* Frame::Duplicate(IDuplicationContext* context) const
{
    auto copy = std::make_unique<Frame>();
    context->MapInstance(this, copy.get(), false);   // before the reference, which leads back here
    Frame* const registered = copy.release();
    CopyTo(*registered, *context);
    return registered;
}

void Frame::CopyTo(IDuplicatable& target, IDuplicationContext& context) const
{
    auto& copy = static_cast<Frame&>(target);
    copy.name = name;
    copy.x = x;
    copy.y = y;
    copy.width = width;
    copy.height = height;
    copy.next = static_cast<Frame*>(context.FindOrDuplicateMappedInstance(next, false));
}

IDuplicatable* Page::Duplicate(IDuplicationContext* context) const
{
    auto copy = std::make_unique<Page>();
    context->MapInstance(this, copy.get(), false);
    Page* const registered = copy.release();
    CopyTo(*registered, *context);
    return registered;
}

void Page::CopyTo(IDuplicatable& target, IDuplicationContext& context) const
{
    auto& copy = static_cast<Page&>(target);
    copy.width = width;
    copy.height = height;
    copy.frames.reserve(frames.size());
    for (const auto& frame : frames)   // the page owns its frames, whichever of them has led to them
        copy.frames.emplace_back(static_cast<Frame*>(context.FindOrDuplicateMappedInstance(frame.get(), true)));
}

Frame* Page::Find(const std::string& wanted) const
{
    const auto found =
        std::find_if(frames.begin(), frames.end(), [&](const auto& frame) { return frame->name == wanted; });
    return found == frames.end() ? nullptr : found->get();
}

Frame& Page::Add(std::string wanted)
{
    frames.push_back(std::make_unique<Frame>());
    frames.back()->name = std::move(wanted);
    return *frames.back();
}

TvlUtils::Any Flyer::GetStatistic(DocumentStatistic statistic) const
{
    std::error_code unknown;
    switch (statistic) {
    case DocumentStatistic::PageCount:
        return static_cast<int>(pages.size());
    case DocumentStatistic::ObjectCount: {
        std::size_t count = 0;
        for (const auto& page : pages)
            count += page->frames.size();
        return static_cast<int>(count);
    }
    case DocumentStatistic::FilePath:
        return m_path;
    case DocumentStatistic::FileSize:
        return m_path.IsEmpty()
            ? TvlUtils::Any()
            : TvlUtils::Any(static_cast<double>(std::filesystem::file_size(SystemIO::ToFilePath(m_path), unknown)));
    default:
        return {};
    }
}

bool Flyer::Save(const TvlString& path)
{
    if (pages.empty())
        return false;
    const std::string width = Millimetres(pages.front()->width), height = Millimetres(pages.front()->height);
    const std::string all = std::to_string(pages.size());
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
                       "version=\"1.1\" data-width=\""
        + width + "\" data-height=\"" + height + "\" width=\"" + width + "mm\" height=\"" + height
        + "mm\" viewBox=\"0 0 " + width + ' ' + height + "\">\n";
    for (const auto& page : pages) {
        text += "  <g>\n";
        for (const auto& frame : page->frames)
            text += FrameText(*frame);
        text += "  </g>\n";
    }
    if (!SystemIO::File::WriteAside(path, text + "</svg>\n"))
        return false;
    m_path = path;
    return true;
}

bool Flyer::Open(const TvlString& path)
{
    std::string bytes;
    WXmlDoc document(false);
    if (!SystemIO::File::ReadAll(path, bytes) || !document.LoadBytes(bytes))
        return false;
    const WXmlNode root = document.GetRootNode();
    WXmlNodeList groups;
    root.GetNodes(WXPath(L"g"), groups);
    if (groups.Count() == 0)
        return false;
    std::vector<std::unique_ptr<Page>> read;
    for (const WXmlNode& group : groups)
        read.push_back(ReadPage(group, root));
    pages = std::move(read);
    m_path = path;
    return true;
}

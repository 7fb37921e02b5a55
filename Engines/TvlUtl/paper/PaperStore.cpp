// The store's life: reading and writing the user's file.
#include "PaperTypes.h"

#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPlatform/TvlLocale.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvlXml/WXmlDoc.h"
#include "windows/Locale.h"

#include <algorithm>
#include <span>
#include <stdexcept>

using namespace TvlUtils::SystemIO;

template class TvlUtils::Singleton<CPaperTypeMgr, 0>;

namespace {
constexpr const wchar_t* kFileName = L"PaperTypes.xml";
constexpr const wchar_t* kSizes = L"sizes";
constexpr const wchar_t* kCustomSizes = L"CustomPageSizes";
constexpr const wchar_t* kSizesPath = L"/PageSizes/sizes/*";
constexpr const wchar_t* kCustomSizesPath = L"/PageSizes/CustomPageSizes/*";

TvlString Pageset(const TvlString& system) { return L"/PageSizes/pageset[@system='" + system + L"']"; }
}   // namespace

CPaperTypeMgr::CPaperTypeMgr() { Initialize(); }
CPaperTypeMgr::~CPaperTypeMgr() = default;
void CPaperTypeMgr::Shutdown() { GetInstance().Uninitialize(); }

bool CPaperTypeMgr::Initialize()
{
    m_document = std::make_unique<WXmlDoc>(false);
    m_path = Path::Combine(GetUserProfileConfigDir(), kFileName);
    if (File::Exists(m_path))
        UpdatePredefinedSizes(Path::Combine(INIGetConfigDir(), kFileName), m_path);
    else if (!CopyMaster(false))   // a file that only seemed to be missing is left alone
        return false;
    // Custom papers come behind the order, since adding one appends to it.
    return m_document->Load(m_path) && LoadPredefinedPapers() && LoadPaperOrder() && LoadCustomPapers()
        && LoadMRUList();
}

bool CPaperTypeMgr::Uninitialize()
{
    if (m_document && m_document->IsLoaded() && !m_path.IsEmpty()) {
        SavePredefinedPapers();
        SaveCustomPapers();
        SaveMRUList();
        m_document->Save(m_path);
    }
    m_papers.clear();
    m_document.reset();
    return true;
}

bool CPaperTypeMgr::CopyXmlFromSystemFolder() { return CopyMaster(true); }

bool CPaperTypeMgr::CopyMaster(bool overwrite)
{
    if (!File::Copy(Path::Combine(INIGetConfigDir(), kFileName), m_path, overwrite))
        return false;
    File::MakeWritable(m_path);
    return true;
}

bool CPaperTypeMgr::LoadPredefinedPapers()
{
    m_predefinedCount = 0;
    const WXmlNodeList nodes = m_document->GetNodes(WXPath(kSizesPath));
    m_papers.assign(nodes.Count(), {});
    for (const WXmlNode& node : nodes) {
        PaperTypeInformation paper;
        if (!ReadPaper(node, paper, false))
            continue;
        if (static_cast<std::size_t>(paper.Type) >= m_papers.size())
            throw std::out_of_range("invalid vector subscript");
        m_papers[static_cast<std::size_t>(paper.Type)] = std::move(paper);
    }
    m_predefinedCount = static_cast<std::int32_t>(nodes.Count());
    return true;
}

bool CPaperTypeMgr::LoadPaperOrder()
{
    m_order.clear();
    m_displayOrder.clear();
    std::vector<char> isListed(m_papers.size());
    const WXmlNodeList nodes = m_document->GetNodes(WXPath(GetPagesetPath() + L"/order/*"));
    const auto add = [&](std::int64_t index) {
        if (!PaperAt(index) || IsHidden(index))
            return;
        m_order.push_back(index);
        isListed[static_cast<std::size_t>(index)] = 1;
    };
    for (const WXmlNode& node : nodes)
        add(node.Value().GetInt(-1));
    for (std::int64_t index = 0; nodes.Count() == 0 && index < GetCount(); ++index)
        add(index);
    m_displayOrder = m_order;
    // Hidden for good: the next start sees it too, under another country as well. Orders are of
    // predefined papers.
    const std::size_t end = std::min(m_papers.size(), static_cast<std::size_t>(m_predefinedCount));
    for (std::size_t index = 0; index < end; ++index)
        m_papers[index].Hidden |= !isListed[index];
    return true;
}

bool CPaperTypeMgr::LoadCustomPapers()
{
    m_customCount = 0;
    m_lastCustomId = 0;
    const WXmlNodeList nodes = m_document->GetNodes(WXPath(kCustomSizesPath));
    m_papers.reserve(m_papers.size() + nodes.Count());
    for (const WXmlNode& node : nodes) {
        PaperTypeInformation paper;
        if (!ReadPaper(node, paper, true))
            continue;
        Append(std::move(paper));
        Broadcast();
    }
    return true;
}

bool CPaperTypeMgr::LoadMRUList()
{
    m_mru.clear();
    const WXmlNodeList nodes = m_document->GetNodes(WXPath(GetPagesetPath() + L"/mru/*"));
    for (const WXmlNode& node : nodes)
        if (const int index = node.Value().GetInt(-1); PaperAt(index))
            m_mru.push_back(index);
    m_maxMRU = std::max(m_maxMRU, static_cast<std::int64_t>(nodes.Count()));
    return true;
}

bool CPaperTypeMgr::SavePapers(const wchar_t* name, std::size_t first, std::size_t count, bool custom)
{
    if (!m_document->IsLoaded())
        return false;
    const std::span all = m_papers;
    first = std::min(first, all.size());
    return WritePapers(*m_document, name, all.subspan(first, std::min(count, all.size() - first)), custom);
}

bool CPaperTypeMgr::SavePredefinedPapers()
{
    return SavePapers(kSizes, 0, static_cast<std::size_t>(m_predefinedCount), false);
}

bool CPaperTypeMgr::SaveCustomPapers()
{
    return SavePapers(
        kCustomSizes, static_cast<std::size_t>(m_predefinedCount), static_cast<std::size_t>(m_customCount), true);
}

bool CPaperTypeMgr::SaveMRUList()
{
    if (!m_document->IsLoaded())
        return false;
    const WXmlNode pageset = m_document->GetRootNode().GetNode(WXPath(GetPagesetPath()));
    pageset.DeleteChild(WXPath(L"mru"));
    if (m_mru.empty())
        return true;
    const WXmlNode list = pageset.CreateChild(L"mru", nullptr);
    for (const std::int64_t index : m_mru)
        list.CreateChild(L"page", nullptr).Value().SetInt(static_cast<int>(index), -1);
    return true;
}

TvlString CPaperTypeMgr::GetPagesetPath() const
{
    const std::string country = TvlPlatform::ToUtf8(TvlLocale::GetCurrentCountryISOCode());
    for (const WXmlNode& node : m_document->GetNodes(WXPath(L"/PageSizes/locales/*"))) {
        if (node.Attribute(L"geoid").GetUtf8() != country)
            continue;
        const TvlString system = node.Value().GetString(L"");
        if (!system.IsEmpty())
            return Pageset(system);
        break;
    }
    return Pageset(OSUtils::LocaleEnvironment::GetUnits() == 1 ? L"imperial" : L"metric");
}

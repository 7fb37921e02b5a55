// Questions to the store.
#include "PaperTypes.h"

#include <algorithm>
#include <stdexcept>

namespace {
constexpr std::size_t kFirstRealPaper = 2;   // behind the custom paper and the one without dimensions
constexpr int kPixel = 6;
constexpr std::int32_t kBasePerMillimetre = 10000;

bool HasSize(const PaperTypeInformation& paper, int width, int height)
{
    return paper.Width == width && paper.Height == height;
}

bool HasSizeEitherWay(const PaperTypeInformation& paper, int width, int height)
{
    return HasSize(paper, width, height) || HasSize(paper, height, width);
}
}   // namespace

const PaperTypeInformation* CPaperTypeMgr::PaperAt(std::int64_t index) const
{
    return index >= 0 && index < GetCount() ? &m_papers[static_cast<std::size_t>(index)] : nullptr;
}

const PaperTypeInformation& CPaperTypeMgr::CheckedPaper(std::size_t index) const
{
    if (index >= m_papers.size())
        throw std::out_of_range("invalid vector subscript");
    return m_papers[index];
}

PaperType CPaperTypeMgr::GetTypeFromInt(int value)
{
    return static_cast<unsigned>(value) < kPaperTypeCount ? static_cast<PaperType>(value) : kPaperCustom;
}

std::int64_t CPaperTypeMgr::GetCount() const { return static_cast<std::int64_t>(m_papers.size()); }
int CPaperTypeMgr::GetPredefinedCount() const { return m_predefinedCount; }

bool CPaperTypeMgr::GetPaperInfoAt(int index, PaperTypeInformation& paper) const
{
    const PaperTypeInformation* const found = PaperAt(index);
    if (found)
        paper = *found;
    return found != nullptr;
}

bool CPaperTypeMgr::GetPaperInfo(PaperType type, PaperTypeInformation& paper) const
{
    return GetPaperInfoAt(type, paper);
}

bool CPaperTypeMgr::GetPaperInfo(PaperType type, int width, int height, PaperTypeInformation& paper) const
{
    if (type != kPaperCustom)
        return GetPaperInfoAt(type, paper);
    if (FindCustomPaper(width, height, paper) != -1)
        return true;
    paper.Type = kPaperCustom;
    paper.Width = width;
    paper.Height = height;
    paper.Rotatable = true;
    return false;
}

bool CPaperTypeMgr::GetPaperNameAt(int index, TvlString& name) const
{
    const PaperTypeInformation* const paper = PaperAt(index);
    if (paper)
        name = paper->DisplayName;
    return paper != nullptr;
}

bool CPaperTypeMgr::GetPaperName(PaperType type, TvlString& name) const { return GetPaperNameAt(type, name); }

bool CPaperTypeMgr::GetPaperGUIDAt(int index, TvlString& guid) const
{
    const PaperTypeInformation* const paper = PaperAt(index);
    if (paper)
        guid = paper->PaperGuid;
    return paper != nullptr;
}

std::int64_t CPaperTypeMgr::GetPaperSize(PaperType type) const
{
    const PaperTypeInformation* const paper = PaperAt(type);
    return paper ? std::int64_t{paper->Width / kBasePerMillimetre} * (paper->Height / kBasePerMillimetre) : 0;
}

bool CPaperTypeMgr::IsHidden(std::int64_t index) const
{
    const PaperTypeInformation* const paper = PaperAt(index);
    return paper && paper->Hidden;
}

std::int64_t CPaperTypeMgr::FindCustomPaper(int width, int height, PaperTypeInformation& paper) const
{
    for (std::int64_t index = m_predefinedCount; const auto* const custom = PaperAt(index); ++index)
        if (HasSize(*custom, width, height)) {
            paper = *custom;
            return index;
        }
    return -1;
}

std::int64_t CPaperTypeMgr::FindCustomPaperIndex(const PaperTypeInformation& paper) const
{
    for (std::int64_t index = m_predefinedCount; const auto* const custom = PaperAt(index); ++index) {
        const bool isSame = HasSize(*custom, paper.Width, paper.Height) && custom->Units == paper.Units;
        const bool hasResolution = custom->ResolutionX == paper.ResolutionX && custom->ResolutionY == paper.ResolutionY;
        if (isSame && (paper.Units != kPixel || hasResolution))
            return custom->CustomId;
    }
    return -1;
}

std::int64_t CPaperTypeMgr::FindCustomPaperIndex(const TvlString& name) const
{
    for (std::int64_t index = m_predefinedCount; const auto* const custom = PaperAt(index); ++index)
        if (custom->DisplayName.Compare(name) == 0)
            return index;
    return -1;
}

int CPaperTypeMgr::FindPredefinedPaper(int width, int height, PaperTypeInformation& paper) const
{
    for (std::size_t index = kFirstRealPaper; !m_papers.empty() && index < kPaperTypeCount; ++index)
        if (const auto& found = CheckedPaper(index); !found.Hidden && HasSizeEitherWay(found, width, height)) {
            paper = found;
            return static_cast<int>(index);
        }
    return -1;
}

int CPaperTypeMgr::FindPredefinedPaperByName(
    int width, int height, const TvlString& name, PaperTypeInformation& paper) const
{
    for (std::size_t index = kFirstRealPaper; !m_papers.empty() && index < kPaperTypeCount; ++index) {
        const auto& found = CheckedPaper(index);
        if (!found.Hidden && HasSizeEitherWay(found, width, height) && found.DisplayName.Compare(name) == 0) {
            paper = found;
            return static_cast<int>(index);
        }
    }
    return -1;
}

int CPaperTypeMgr::FindPredefinedPaperIndex(const PaperTypeInformation& paper, bool turned) const
{
    const std::size_t end = std::min<std::size_t>(kPaperTypeCount, m_papers.size());
    for (std::size_t index = kFirstRealPaper; index < end; ++index) {
        const auto& found = m_papers[index];
        if (!found.Hidden
            && (HasSize(found, paper.Width, paper.Height) || (turned && HasSize(found, paper.Height, paper.Width))))
            return static_cast<int>(index);
    }
    return -1;
}

int CPaperTypeMgr::FindPredefinedPaperIndex(PaperType type) const
{
    const std::size_t end = std::min<std::size_t>(kPaperTypeCount, m_papers.size());
    for (std::size_t index = 0; index < end; ++index)
        if (m_papers[index].Type == type)
            return static_cast<int>(index);
    return -1;
}

int CPaperTypeMgr::FindPaperIndexByGUID(const TvlString& guid) const
{
    const auto found = std::find_if(m_papers.begin(), m_papers.end(),
        [&](const PaperTypeInformation& paper) { return paper.PaperGuid.CompareNoCase(guid) == 0; });
    return found == m_papers.end() ? -1 : static_cast<int>(found - m_papers.begin());
}

bool CPaperTypeMgr::IsCustomPaper(PaperType type, int width, int height) const
{
    PaperTypeInformation found;
    return type == kPaperCustom && FindCustomPaper(width, height, found) != -1;
}

bool CPaperTypeMgr::IsCustomPaper(const PaperTypeInformation& paper, bool turned) const
{
    return IsCustomPaper(paper.Type, paper.Width, paper.Height)
        || (turned && IsCustomPaper(paper.Type, paper.Height, paper.Width));
}

bool CPaperTypeMgr::IsPredefinedPaper(const PaperTypeInformation& paper, bool turned) const
{
    return FindPredefinedPaperIndex(paper, turned) != -1;
}

CPaperTypeMgr::Indices CPaperTypeMgr::GetPaperOrder() const { return m_order; }
CPaperTypeMgr::Indices CPaperTypeMgr::GetPaperDisplayOrder() const { return m_displayOrder; }
CPaperTypeMgr::Indices CPaperTypeMgr::GetMRUList() const { return m_mru; }
std::int64_t CPaperTypeMgr::GetMaxMRUSize() const { return m_maxMRU; }
int CPaperTypeMgr::GetLastPaperCustomTypeID() const { return m_lastCustomId; }
void CPaperTypeMgr::SetLastPaperCustomTypeID(int id) { m_lastCustomId = id; }

int CPaperTypeMgr::CheckPaperTypeID(int id) const
{
    return std::find(m_order.begin(), m_order.end(), id) == m_order.end() ? 0 : id;
}

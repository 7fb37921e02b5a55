// Changes of the store.
#include "PaperTypes.h"

#include "siblings/TvlUtils/Guid.h"

#include <algorithm>
#include <stdexcept>

void CPaperTypeMgr::Broadcast()
{
    static const TvlString subject = L"PaperTypeManager";
    UpdateListeners(subject);
}

bool CPaperTypeMgr::AddCustomPaper(const PaperTypeInformation& paper, bool overwrite)
{
    if (const std::int64_t same = overwrite ? FindCustomPaperIndex(paper.DisplayName) : -1; same != -1) {
        m_papers[static_cast<std::size_t>(same)] = paper;
        Broadcast();
        return true;
    }
    const std::int64_t index = GetCount();
    PaperTypeInformation added = paper;
    added.PaperGuid = TvlUtils::Guid::Generate().ToString();
    Append(std::move(added));
    if (overwrite && index >= kPaperTypeCount)
        m_lastCustomId = static_cast<std::int32_t>(index);
    Broadcast();
    return true;
}

void CPaperTypeMgr::Append(PaperTypeInformation&& paper)
{
    const std::int64_t index = GetCount();
    PaperTypeInformation& added = m_papers.emplace_back(std::move(paper));
    m_order.push_back(index);
    if (index >= kPaperTypeCount)
        added.CustomId = static_cast<std::int32_t>(index);
    ++m_customCount;
}

bool CPaperTypeMgr::UpdateCustomPaper(const PaperTypeInformation& paper)
{
    const std::int64_t index = FindCustomPaperIndex(paper.DisplayName);
    if (index == -1)
        return false;
    m_papers[static_cast<std::size_t>(index)] = paper;
    Broadcast();
    return true;
}

bool CPaperTypeMgr::DeletePaper(const PaperTypeInformation& paper)
{
    const int predefined = FindPredefinedPaperIndex(paper, false);
    const bool custom = predefined == -1;
    const std::int64_t target = custom ? FindCustomPaperIndex(paper) : predefined;
    if (target < 1)
        return false;
    DeletePaper(target, custom);
    return true;
}

void CPaperTypeMgr::DeletePaper(std::int64_t index, bool custom)
{
    if (!PaperAt(index))
        return;
    const auto place = m_papers.begin() + static_cast<std::ptrdiff_t>(index);
    if (custom) {
        m_papers.erase(place);
        --m_customCount;
    } else {
        place->Hidden = true;
    }
    m_lastCustomId = 0;
    if (const auto last = std::find(m_order.rbegin(), m_order.rend(), index); last != m_order.rend())
        m_order.erase(std::next(last).base());
    RemoveMRUItem(index);
    for (std::int64_t& moved : m_order) {
        if (!custom || moved <= index)
            continue;
        --moved;
        if (PaperAt(moved))
            m_papers[static_cast<std::size_t>(moved)].CustomId =
                moved >= kPaperTypeCount ? static_cast<std::int32_t>(moved) : 0;
    }
    for (std::int64_t& moved : m_mru)
        moved -= custom && moved > index;
    Broadcast();
}

void CPaperTypeMgr::SetMaxMRUSize(std::int64_t size)
{
    size = std::max<std::int64_t>(size, 0);
    if (size < m_maxMRU) {
        if (static_cast<std::size_t>(m_maxMRU) > m_mru.max_size())
            throw std::length_error("list too long");
        m_mru.resize(static_cast<std::size_t>(m_maxMRU));
    }
    m_maxMRU = size;
}

void CPaperTypeMgr::AddMRUItem(std::int64_t index)
{
    if (m_maxMRU == 0)
        return;
    m_mru.remove(index);
    m_mru.push_front(index);
    if (static_cast<std::int64_t>(m_mru.size()) > m_maxMRU)
        m_mru.pop_back();
}

void CPaperTypeMgr::RemoveMRUItem(std::int64_t index)
{
    if (const auto found = std::find(m_mru.begin(), m_mru.end(), index); found != m_mru.end())
        m_mru.erase(found);
}

void CPaperTypeMgr::ResetCustomPaperTypeOrder()
{
    while (!m_order.empty() && m_order.back() >= kPaperTypeCount)
        m_order.pop_back();
    for (std::int64_t index = kPaperTypeCount; index < GetCount(); ++index) {
        m_papers[static_cast<std::size_t>(index)].CustomId = static_cast<std::int32_t>(index);
        m_order.push_back(index);
    }
}

// The list engine as a vector of optional byte strings, beside the operations of the engine itself.
#pragma once

#include "ListMan.h"
#include "Operations.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace ListTrials {

/// Knows what a list must hold and how large its block must be. A free slot is an element without a string.
class ListModel {
public:
    explicit ListModel(ULONG headerSize) : m_headerSize(headerSize) { }

    /// The resize that fails next: 0 is the first one from now on, -1 none.
    int failing = -1;

    LONG Count() const { return static_cast<LONG>(m_elements.size()); }
    bool ShrinkFailed() const { return m_shrinkFailed; }
    const std::vector<std::optional<std::string>>& Elements() const { return m_elements; }
    ULONG TotalSize() const
    {
        std::size_t bytes = m_headerSize + 4 * (m_elements.size() + 1 + m_spare);
        for (const auto& element : m_elements)
            bytes += element ? element->size() : 0;
        return static_cast<ULONG>(bytes);
    }

    LONG Insert(LONG index, const std::string& data)
    {
        if (data.empty() || !Resize())
            return -1;
        m_elements.insert(m_elements.begin() + std::min(index < 0 ? Count() : index, Count()), data);
        m_spare = 0;
        return Count();
    }

    LONG Remove(LONG index)
    {
        if (!Holds(index))
            return -1;
        const bool shrinks = m_elements[At(index)] || m_spare == 1;
        m_elements.erase(m_elements.begin() + index);
        m_spare = 1;
        return shrinks && !Shrink() ? -1 : Count();
    }

    LONG Delete(LONG index)
    {
        if (!Holds(index))
            return -1;
        const bool shrinks = m_elements[At(index)].has_value();
        m_elements[At(index)].reset();
        return shrinks && !Shrink() ? -1 : Count();
    }

    LONG Replace(LONG index, const std::string& data)
    {
        if (!Holds(index))
            return -1;
        if (Bytes(index).size() != data.size()) {
            Remove(index);
            return Insert(index, data);
        }
        if (!data.empty())
            m_elements[At(index)] = data;
        return Count();
    }

    LONG Put(LONG index, const std::string& data)
    {
        if (data.empty())
            return -1;
        if (index < Count())
            return Replace(index, data) < 0 ? -1 : 0;
        if (!Resize())
            return -1;
        m_spare = index == Count() ? 0 : m_spare - std::min<std::size_t>(m_spare, At(index - Count()) + 1);
        m_elements.resize(At(index) + 1);
        m_elements.back() = data;
        return 0;
    }

    LONG InsertAtFree(const std::string& data)
    {
        if (data.empty())
            return 0;
        const auto slot = std::find(m_elements.begin(), m_elements.end(), std::nullopt);
        if (slot == m_elements.end()) {
            const LONG count = Insert(Count(), data);
            return count < 0 ? -1 : count - 1;
        }
        if (!Resize())
            return -1;
        *slot = data;
        return static_cast<LONG>(slot - m_elements.begin());
    }

    LONG InsertSubList(LONG index, const std::string& data)
    {
        if (index < 0)
            return -1;
        const LONG place = std::min(index, Count());
        if (Insert(place, data.empty() ? std::string(4, '\xff') : data) > 0 && data.empty())
            Delete(place);
        return 0;
    }

    LONG Find(LONG start, const std::string& key, std::size_t offset, bool whole) const
    {
        if (start < 0 || key.empty())
            return -1;
        for (LONG i = start; i < Count(); ++i)
            if (Bytes(i).size() >= key.size() && (!whole || Bytes(i).size() == key.size())
                && Bytes(i).compare(offset, key.size() - offset, key, offset) == 0)
                return i;
        return -1;
    }

    bool Holds(LONG index) const { return index >= 0 && index < Count(); }
    /// Bytes of an element that the list holds; none of a free slot.
    std::string Bytes(LONG index) const { return m_elements[At(index)].value_or(""); }

private:
    static std::size_t At(LONG index) { return static_cast<std::size_t>(index); }

    bool Resize()
    {
        const bool failed = failing >= 0 && failing-- == 0;
        m_shrinkFailed = m_shrinkFailed && failed;
        return !failed;
    }
    bool Shrink()
    {
        const bool shrunk = Resize();
        m_shrinkFailed = !shrunk;
        return shrunk;
    }

    ULONG m_headerSize;
    std::vector<std::optional<std::string>> m_elements;
    std::size_t m_spare = 0;       // table entries without an element
    bool m_shrinkFailed = false;   // the block is larger than the list
};

}   // namespace ListTrials

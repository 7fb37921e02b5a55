// Which names were seen already, for files in which the first of two that are alike counts.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace TvlUtils {

/// A set of names that are told apart without case. Each is folded once, into one text behind those before it: a set that is
/// cleared for every section of a file takes no memory anew.
class SeenNames {
public:
    /// Whether a name is seen for the first time.
    bool Add(std::wstring_view name)
    {
        const std::size_t begin = m_folded.size();
        m_folded.append(name);
        std::transform(m_folded.begin() + static_cast<std::ptrdiff_t>(begin), m_folded.end(),
            m_folded.begin() + static_cast<std::ptrdiff_t>(begin), TvlFoldCase);
        const Name added{std::hash<std::wstring_view>()(Text({0, begin, name.size()})), begin, name.size()};
        std::size_t& place = m_places[PlaceOf(added)];
        if (place != kFree) {
            m_folded.resize(begin);
            return false;
        }
        m_names.push_back(added);
        place = m_names.size();
        if (2 * m_names.size() > m_places.size())
            Grow();
        return true;
    }

    void Clear()
    {
        m_folded.clear();
        m_names.clear();
        // Not the largest that there was: clearing costs as much as the few names of the next section.
        m_places.assign(kFewPlaces, kFree);
    }

private:
    static constexpr std::size_t kFewPlaces = 64;   // all numbers of places are powers of two
    static constexpr std::size_t kFree = 0;

    struct Name {
        std::size_t hash;
        std::size_t begin;   // in m_folded
        std::size_t size;
    };

    std::wstring_view Text(const Name& name) const { return std::wstring_view(m_folded).substr(name.begin, name.size); }

    /// Where a name stands, or the place that is free for it. At least half of the places are free.
    std::size_t PlaceOf(const Name& name) const
    {
        const std::size_t mask = m_places.size() - 1;
        std::size_t at = name.hash & mask;
        for (; m_places[at] != kFree; at = (at + 1) & mask)
            if (const Name& other = m_names[m_places[at] - 1]; other.hash == name.hash && Text(other) == Text(name))
                break;
        return at;
    }

    void Grow()
    {
        m_places.assign(2 * m_places.size(), kFree);
        for (std::size_t i = 0; i < m_names.size(); ++i)
            m_places[PlaceOf(m_names[i])] = i + 1;
    }

    std::wstring m_folded;
    std::vector<Name> m_names;
    std::vector<std::size_t> m_places = std::vector<std::size_t>(kFewPlaces, kFree);   // number of the name + 1
};

}   // namespace TvlUtils

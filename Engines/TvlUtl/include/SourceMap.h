// What a copy in progress knows of each source object, found by the object's address.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TvlUtl {

class IDuplicatable;

/// A map from source addresses (null is one like any other) to values. Entries are rows in the order in which they were
/// added; a hash table of row numbers finds them. Finding and adding take constant time on average.
/// Only MakeRoom and copying can fail, and a failure leaves the map as it was.
template <class Value>
class SourceMap {
public:
    /// One entry.
    struct Row {
        const IDuplicatable* source;   // never followed, only compared
        Value value;                   // what Find gives
    };

    /// The value of a source, or null. It stays where it is until the next MakeRoom, sort or removal.
    Value* Find(const IDuplicatable* source) noexcept { return const_cast<Value*>(std::as_const(*this).Find(source)); }
    /// The same for reading.
    const Value* Find(const IDuplicatable* source) const noexcept
    {
        if (m_slots.empty())
            return nullptr;
        const std::uint32_t row = m_slots[SlotOf(source)].row;
        return row == kNone ? nullptr : &m_rows[row - 1].value;
    }

    /// Makes sure that one more source can be added. Throws std::bad_alloc, or std::length_error at 2^31 entries.
    void MakeRoom()
    {
        if (m_rows.size() == m_rows.capacity())
            m_rows.reserve(std::max(kFewestSlots / 2, m_rows.size() * 2));
        if ((m_rows.size() + 1) * 2 <= m_slots.size())
            return;
        if (m_slots.size() > UINT32_MAX)
            throw std::length_error("SourceMap");
        std::vector<Slot> slots(std::max(kFewestSlots, m_slots.size() * 2));
        m_slots.swap(slots);
        NumberRows();
    }

    /// Adds a source that has no value yet. MakeRoom comes first.
    void Add(const IDuplicatable* source, Value value) noexcept
    {
        m_rows.push_back({source, std::move(value)});
        Number(m_rows.size());
    }

    /// All entries, in the order of addition unless they have been sorted.
    std::vector<Row>& Rows() noexcept { return m_rows; }

    /// Puts the rows in the order of their addresses, without needing memory.
    void SortBySource() noexcept
    {
        constexpr auto isBefore = [](const Row& a, const Row& b) { return std::less<>()(a.source, b.source); };
        if (std::is_sorted(m_rows.begin(), m_rows.end(), isBefore))
            return;
        std::sort(m_rows.begin(), m_rows.end(), isBefore);
        std::fill(m_slots.begin(), m_slots.end(), Slot());
        NumberRows();
    }

    /// Empties the map and returns what it held.
    std::vector<Row> TakeRows() noexcept
    {
        m_slots.clear();
        return std::exchange(m_rows, {});
    }

    /// Exchanges all entries, without copying any.
    void Swap(SourceMap& other) noexcept
    {
        m_rows.swap(other.m_rows);
        m_slots.swap(other.m_slots);
    }

private:
    static constexpr std::uint32_t kNone = 0;
    static constexpr std::size_t kFewestSlots = 16;

    struct Slot {
        std::uint32_t row = kNone;   // counted from 1
        std::uint32_t mark = 0;   // lower half of the hash: other sources are passed over without a look at their rows
    };

    /// Multiplication by 2^64 divided by the golden ratio: the upper bits tell neighbouring addresses apart.
    static std::uint64_t HashOf(const IDuplicatable* source) noexcept
    {
        return reinterpret_cast<std::uintptr_t>(source) * 0x9E3779B97F4A7C15u;
    }

    /// The slot of a source, or the free one where it would stand. At least half of the slots are free.
    std::size_t SlotOf(const IDuplicatable* source) const noexcept
    {
        const std::uint64_t hash = HashOf(source);
        const auto mark = static_cast<std::uint32_t>(hash);
        const std::size_t last = m_slots.size() - 1;
        std::size_t at = static_cast<std::size_t>(hash >> (64 - std::bit_width(last)));
        while (m_slots[at].row != kNone && (m_slots[at].mark != mark || m_rows[m_slots[at].row - 1].source != source))
            at = (at + 1) & last;
        return at;
    }

    /// Enters a row into its slot.
    void Number(std::size_t row) noexcept
    {
        const IDuplicatable* const source = m_rows[row - 1].source;
        m_slots[SlotOf(source)] = {static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(HashOf(source))};
    }

    /// Enters all rows into slots that are all free.
    void NumberRows() noexcept
    {
        for (std::size_t row = 1; row <= m_rows.size(); ++row)
            Number(row);
    }

    std::vector<Row> m_rows;
    std::vector<Slot> m_slots;   // a power of two of them, or none
};

}   // namespace TvlUtl

// WGList beside a plain vector of slots.
#pragma once

#include "Operations.h"
#include "WGList.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace ListTrials {

/// Shows what the class keeps to itself.
struct OpenList : WGList {
    int Capacity() const { return capacity; }
    int Slots() const { return count; }
    const LISTELEMENT* Elements() const { return elements; }
    int Allocated() const { return allocated; }
    using WGList::CopyElement;
    using WGList::Shrink;
};

/// What the heap refused to an operation.
enum class Refused { Nothing, Slots, Block, Shrink };

class SlotModel {
public:
    struct Slot {
        bool used = false;
        std::string bytes;   // stay while the slot is free
    };

    Refused refused = Refused::Nothing;
    std::vector<Slot> slots;
    std::optional<std::string> header;
    int capacity = 16;

    int Count() const { return static_cast<int>(slots.size()); }
    bool Holds(int position) const { return position >= 0 && position < Count(); }
    bool Used(int position) const { return Holds(position) && slots[At(position)].used; }

    int Insert(int position, const std::string& data)
    {
        if (position < 0)
            return -1;
        position = std::min(position, Count());
        if (Count() == capacity)
            capacity += 8;
        if (refused == Refused::Slots)
            return 2;
        const bool atEnd = position == Count();
        if (!atEnd && slots[At(position)].used)
            slots.insert(slots.begin() + position, Slot{});
        if (refused == Refused::Block)
            return 3;
        if (atEnd)
            slots.emplace_back();
        slots[At(position)] = {true, data};
        return position;
    }

    int InsertAnywhere(const std::string& data)
    {
        const auto slot = std::find_if(slots.begin(), slots.end(), [](const Slot& s) { return !s.used; });
        const int position = static_cast<int>(slot - slots.begin());
        return slot == slots.end() ? Insert(position, data) : Replace(position, data);
    }

    int Replace(int position, const std::string& data)
    {
        if (position < 0 || slots.empty())
            return -1;
        position = std::min(position, Count() - 1);
        if (refused == Refused::Block)
            return 3;
        slots[At(position)] = {true, data};
        return position;
    }

    int Delete(int position)
    {
        if (!Used(position))
            return -1;
        slots[At(position)].used = false;
        if (position == Count() - 1)
            slots.pop_back();
        return 0;
    }

    int Remove(int position)
    {
        if (!Holds(position))
            return 0;
        const bool last = position == Count() - 1;
        Delete(position);
        if (!last)
            slots.erase(slots.begin() + position);
        Shrink();
        return 1;
    }

    void Compact()
    {
        std::erase_if(slots, [](const Slot& slot) { return !slot.used; });
        Shrink();
    }

    void DeleteAll()
    {
        slots.clear();
        if (capacity >= 9 && refused != Refused::Shrink)
            capacity = 8;
    }

    void SetHeader(const std::string& data)
    {
        if (refused == Refused::Nothing)
            header = data.empty() ? std::nullopt : std::optional(data);
    }

    int Find(int start, const std::string& key, std::size_t offset) const
    {
        if (start < 0)
            return -1;
        for (int i = start; i < Count(); ++i)
            if (slots[At(i)].used && slots[At(i)].bytes.size() >= key.size()
                && slots[At(i)].bytes.compare(offset, key.size() - offset, key, offset) == 0)
                return i;
        return -1;
    }

private:
    static std::size_t At(int position) { return static_cast<std::size_t>(position); }
    void Shrink()
    {
        if (capacity - Count() >= 9 && refused != Refused::Shrink)
            capacity = Count() + 8;
    }
};

struct SlotRow {
    const char* name;
    int (*real)(OpenList& list, const Operation& operation);
    int (*model)(SlotModel& model, const Operation& operation);
};

inline LONG Length(const Operation& o) { return static_cast<LONG>(o.data.size()); }

constexpr SlotRow kSlotRows[] = {
    {"Insert at", [](OpenList& l, const Operation& o) { return l.Insert(o.index, o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Insert(o.index, o.data); }},
    {"Insert", [](OpenList& l, const Operation& o) { return l.Insert(o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.InsertAnywhere(o.data); }},
    {"InsertStart", [](OpenList& l, const Operation& o) { return l.InsertStart(o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Insert(0, o.data); }},
    {"InsertEnd", [](OpenList& l, const Operation& o) { return l.InsertEnd(o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Insert(m.Count(), o.data); }},
    {"Replace", [](OpenList& l, const Operation& o) { return l.Replace(o.index, o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Replace(o.index, o.data); }},
    {"ReplaceStart", [](OpenList& l, const Operation& o) { return l.ReplaceStart(o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Replace(0, o.data); }},
    {"ReplaceEnd", [](OpenList& l, const Operation& o) { return l.ReplaceEnd(o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Replace(m.Count(), o.data); }},
    {"Delete", [](OpenList& l, const Operation& o) { return l.Delete(o.index); },
        [](SlotModel& m, const Operation& o) { return m.Delete(o.index); }},
    {"DeleteStart", [](OpenList& l, const Operation&) { return l.DeleteStart(); },
        [](SlotModel& m, const Operation&) { return m.Delete(0); }},
    {"DeleteEnd", [](OpenList& l, const Operation&) { return l.DeleteEnd(); },
        [](SlotModel& m, const Operation&) { return m.Delete(m.Count() - 1); }},
    {"Remove", [](OpenList& l, const Operation& o) { return l.Remove(o.index); },
        [](SlotModel& m, const Operation& o) { return m.Remove(o.index); }},
    {"RemoveStart", [](OpenList& l, const Operation&) { return l.RemoveStart(); },
        [](SlotModel& m, const Operation&) { return m.Remove(0); }},
    {"RemoveEnd", [](OpenList& l, const Operation&) { return l.RemoveEnd(); },
        [](SlotModel& m, const Operation&) { return m.Remove(m.Count() - 1); }},
    {"FindElement",
        [](OpenList& l, const Operation& o) {
            const LONG half = Length(o) / 2;
            return l.FindElement(o.index, o.data.data(), half, Length(o) - half);
        },
        [](SlotModel& m, const Operation& o) { return m.Find(o.index, o.data, o.data.size() / 2); }},
    {"FindCompleteElement",
        [](OpenList& l, const Operation& o) { return l.FindCompleteElement(o.index, o.data.data(), Length(o)); },
        [](SlotModel& m, const Operation& o) { return m.Find(o.index, o.data, 0); }},
    {"SetHeader", [](OpenList& l, const Operation& o) { return l.SetHeader(o.data.data(), Length(o)), 0; },
        [](SlotModel& m, const Operation& o) { return m.SetHeader(o.data), 0; }},
    // Rare, so that lists get long.
    {"Compact", [](OpenList& l, const Operation& o) { return o.index % 4 ? 0 : (l.Compact(), 0); },
        [](SlotModel& m, const Operation& o) { return o.index % 4 ? 0 : (m.Compact(), 0); }},
    {"DeleteAll", [](OpenList& l, const Operation& o) { return o.index != 9 ? 0 : (l.DeleteAll(), 0); },
        [](SlotModel& m, const Operation& o) { return o.index != 9 ? 0 : (m.DeleteAll(), 0); }},
};

/// What is wrong with a slot beside the model's, as callers see it.
inline std::string SlotDifference(const OpenList& list, int position, const SlotModel::Slot& slot)
{
    LONG size = -1;
    const auto* const bytes = static_cast<const char*>(list.Get(position, size));
    std::string retrieved(slot.bytes.size() + 1, '?');
    const LONG copied = list.Retrieve(position, retrieved.data(), static_cast<LONG>(retrieved.size()));
    retrieved.resize(static_cast<std::size_t>(copied));
    const auto length = static_cast<LONG>(slot.bytes.size());
    const bool same = list.Exist(position) == slot.used && list.Size(position) == length && retrieved == slot.bytes
        && (bytes != nullptr) == slot.used && size == (slot.used ? length : 0);
    return same ? std::string() : "slot " + std::to_string(position) + " differs\n";
}

inline std::string Difference(const OpenList& list, const SlotModel& model)
{
    std::ostringstream said;
    const auto used = std::count_if(model.slots.begin(), model.slots.end(), [](const auto& slot) { return slot.used; });
    if (list.Slots() != model.Count() || list.ListSize() != used || list.Capacity() != model.capacity)
        said << list.Slots() << " slots of " << list.Capacity() << " for " << model.Count() << " of " << model.capacity
             << '\n';
    if (list.Slots() > list.Allocated())
        said << "more slots than the array has\n";
    for (int i = 0; said.str().empty() && i < model.Count(); ++i)
        said << SlotDifference(list, i, model.slots[static_cast<std::size_t>(i)]);

    std::vector<const void*> blocks;
    for (int i = 0; i < list.Slots(); ++i)
        if (const void* const block = list.Elements()[i].data)
            blocks.push_back(block);
    std::sort(blocks.begin(), blocks.end());
    if (std::adjacent_find(blocks.begin(), blocks.end()) != blocks.end())
        said << "two slots own one block\n";

    const std::string header(
        static_cast<const char*>(list.GetHeader()), static_cast<std::size_t>(list.GetHeaderSize()));
    if (header != model.header.value_or(""))
        said << "header differs\n";
    return said.str();
}

inline std::string Compare(const OpenList& list, SlotModel& model, const Operation& operation, int result)
{
    const SlotRow& row = kSlotRows[operation.kind];
    const int expected = row.model(model, operation);
    std::ostringstream said;
    if (result != expected)
        said << "gives " << result << ", not " << expected << '\n';
    said << Difference(list, model);
    return Describe(row.name, operation, said.str());
}

/// Runs one operation on both; what went wrong, or nothing.
inline std::string Step(OpenList& list, SlotModel& model, const Operation& operation)
{
    return Compare(list, model, operation, kSlotRows[operation.kind].real(list, operation));
}

}   // namespace ListTrials

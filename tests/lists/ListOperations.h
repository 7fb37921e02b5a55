// Every function of the list engine beside its model, and what must hold of a list between any two of them.
#pragma once

#include "ListModel.h"

#include <cstring>
#include <sstream>
#include <string>
#include <string_view>

namespace ListTrials {

/// What is left in a buffer as large as the operation's data when `bytes` are copied to it.
inline Outcome Handed(LONG result, const Operation& operation, const std::string& bytes)
{
    std::string buffer(operation.data.size(), '?');
    buffer.replace(0, std::min(bytes.size(), buffer.size()), bytes, 0, buffer.size());
    return {result, buffer};
}

inline LONG Collect(HMEM__* handle, std::string& out)
{
    out.clear();
    return LIST_Enum(
        handle,
        [](void* element, ULONG size, LONG index, long long context) -> LONG {
            auto& collected = *reinterpret_cast<std::string*>(context);
            collected += std::to_string(index) + ':';
            collected.append(static_cast<const char*>(element), size);
            return index != 20;
        },
        reinterpret_cast<long long>(&out));
}

inline Outcome Collect(const ListModel& model)
{
    std::string out;
    for (LONG i = 0; i < model.Count(); ++i) {
        if (!model.Bytes(i).empty())
            out += std::to_string(i) + ':' + model.Bytes(i);
        if (i == 20 && !model.Bytes(i).empty())
            return {20, out};
    }
    return {model.Count(), out};
}

inline Outcome Removed(ListModel& model, const Operation& operation, LONG index, LONG (ListModel::*remove)(LONG))
{
    const std::string bytes = model.Holds(index) ? model.Bytes(index) : "";
    return Handed((model.*remove)(index), operation, bytes);
}

struct ListRow {
    const char* name;
    /// `out` is a buffer as large as the operation's data. Nothing in here allocates but the list.
    LONG (*real)(HMEM__* handle, const Operation& operation, std::string& out);
    Outcome (*model)(ListModel& model, const Operation& operation);
};

inline ULONG SizeOf(const Operation& o) { return static_cast<ULONG>(o.data.size()); }
inline ULONG HalfOf(const Operation& o) { return SizeOf(o) / 2; }

constexpr ListRow kListRows[] = {
    {"Push",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_Push(handle, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome {
            return Handed(model.Insert(model.Count(), o.data), o, {});
        }},
    {"InsertTop",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_InsertTop(handle, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Handed(model.Insert(0, o.data), o, {}); }},
    {"Insert",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_Insert(handle, o.index, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Handed(model.Insert(o.index, o.data), o, {}); }},
    {"PutIth",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_PutIth(handle, o.index, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Handed(model.Put(o.index, o.data), o, {}); }},
    {"ReplaceIth",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_ReplaceIth(handle, o.index, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Handed(model.Replace(o.index, o.data), o, {}); }},
    {"InsertAtFree",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_InsertAtFree(handle, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Handed(model.InsertAtFree(o.data), o, {}); }},
    {"InsertSubList",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_InsertSubList(handle, o.index, o.data.data(), static_cast<LONG>(o.data.size()));
        },
        [](ListModel& model, const Operation& o) -> Outcome {
            return Handed(model.InsertSubList(o.index, o.data), o, {});
        }},
    {"PopOldest",
        [](HMEM__* handle, const Operation& o, std::string& out) -> LONG {
            return LIST_PopOldest(handle, out.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Removed(model, o, 0, &ListModel::Remove); }},
    {"Remove",
        [](HMEM__* handle, const Operation& o, std::string& out) -> LONG {
            return LIST_Remove(handle, o.index, out.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Removed(model, o, o.index, &ListModel::Remove); }},
    {"DeleteIth",
        [](HMEM__* handle, const Operation& o, std::string& out) -> LONG {
            return LIST_DeleteIth(handle, o.index, out.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome { return Removed(model, o, o.index, &ListModel::Delete); }},
    {"GetIth",
        [](HMEM__* handle, const Operation& o, std::string& out) -> LONG {
            return LIST_GetIth(handle, o.index, out.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome {
            const std::string bytes = model.Holds(o.index) ? model.Bytes(o.index) : "";
            const LONG copied = static_cast<LONG>(std::min(bytes.size(), o.data.size()));
            return Handed(o.data.empty() ? 0 : bytes.empty() ? -1 : copied, o, bytes);
        }},
    {"ExistIth",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG { return LIST_ExistIth(handle, o.index); },
        [](ListModel& model, const Operation& o) -> Outcome {
            return Handed(model.Holds(o.index) && !model.Bytes(o.index).empty(), o, {});
        }},
    {"FindElement",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            const ULONG half = HalfOf(o);
            return LIST_FindElement(handle, o.index, o.data.data(), SizeOf(o), half, SizeOf(o) - half);
        },
        [](ListModel& model, const Operation& o) -> Outcome {
            return Handed(model.Find(o.index, o.data, HalfOf(o), false), o, {});
        }},
    {"FindCompleteElement",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_FindCompleteElement(handle, o.index, o.data.data(), SizeOf(o));
        },
        [](ListModel& model, const Operation& o) -> Outcome {
            return Handed(model.Find(o.index, o.data, 0, true), o, {});
        }},
    {"SizeSubList",
        [](HMEM__* handle, const Operation& o, std::string&) -> LONG {
            return LIST_SizeSubList(handle, o.index, 1, 2);
        },
        [](ListModel& model, const Operation& o) -> Outcome {
            const auto size = static_cast<ULONG>(model.Holds(o.index) ? model.Bytes(o.index).size() : 0);
            return Handed(model.Holds(o.index) ? static_cast<LONG>((size - 1) / 2) : -1, o, {});
        }},
    {"Enum", [](HMEM__* handle, const Operation&, std::string& out) -> LONG { return Collect(handle, out); },
        [](ListModel& model, const Operation&) -> Outcome { return Collect(model); }},
};

constexpr unsigned kListPopOldest = 7;
static_assert(std::string_view(kListRows[kListPopOldest].name) == "PopOldest");

/// What is wrong with a list: its block, or its elements beside the model's; empty when nothing is.
inline std::string Difference(HMEM__* handle, const ListModel& model)
{
    std::ostringstream said;
    auto* const list = static_cast<LIST*>(MEMMANLock(handle));
    const auto* const bytes = reinterpret_cast<const char*>(list);
    if (list->totalSize != model.TotalSize() || list->count != static_cast<ULONG>(model.Count()))
        said << "size " << list->totalSize << " for " << model.TotalSize() << ", count " << list->count << '\n';
    const auto blockSize = static_cast<ULONG>(MEMMANGetSize(handle));
    if (blockSize < list->totalSize || (blockSize > list->totalSize && !model.ShrinkFailed()))
        said << "block of " << blockSize << " bytes for a list of " << list->totalSize << '\n';
    if (!said.str().empty())
        return said.str();

    std::vector<ULONG> table(list->count + 1);
    std::memcpy(table.data(), bytes + list->tableOffset, 4 * table.size());
    const ULONG slack = table[0] - list->tableOffset - 4 * (list->count + 1);
    if (!std::is_sorted(table.begin(), table.end()) || table.back() != list->totalSize || (slack != 0 && slack != 4))
        return "offset table is not valid\n";
    for (LONG i = 0; i < model.Count(); ++i) {
        unsigned size = 0;
        const auto* const element = static_cast<const char*>(LIST_LGetIth(list, i, &size));
        if (std::string(element, size) != model.Bytes(i))
            said << "element " << i << " differs\n";
    }
    return said.str();
}

/// What went wrong with an operation that has run on the list, or nothing. Runs it on the model.
inline std::string Compare(HMEM__* handle, ListModel& model, const Operation& operation, const Outcome& real)
{
    const ListRow& row = kListRows[operation.kind];
    const Outcome expected = row.model(model, operation);
    std::ostringstream said;
    if (!(real == expected))
        said << "gives " << real << ", not " << expected << '\n';
    said << Difference(handle, model);
    return Describe(row.name, operation, said.str());
}

/// Runs one operation on both; what went wrong, or nothing.
inline std::string Step(HMEM__* handle, ListModel& model, const Operation& operation)
{
    const ListRow& row = kListRows[operation.kind];
    Outcome real = {0, std::string(operation.data.size(), '?')};
    real.result = row.real(handle, operation, real.out);
    return Compare(handle, model, operation, real);
}

}   // namespace ListTrials

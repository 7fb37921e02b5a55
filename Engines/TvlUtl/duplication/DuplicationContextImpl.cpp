#include "Duplication.h"

#include <algorithm>
#include <random>

namespace TvlUtl {

namespace {
using SharedRows = std::vector<SourceMap<std::shared_ptr<IDuplicatable>>::Row>;

/// Lets go of the copies that nobody else holds and drops their rows; false when there are none.
bool ReleaseUnshared(SharedRows& rows)
{
    std::size_t kept = 0;
    for (auto& row : rows) {
        if (row.value.use_count() <= 1)
            row.value.reset();
        else
            rows[kept++].value.swap(row.value);
    }
    const bool released = kept < rows.size();
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(kept), rows.end());
    return released;
}

/// Keeps few rows, chosen without pattern: however copies refer to each other, the way from one that is still held to the
/// next is short. Few enough for a pass for each of them.
void Thin(SharedRows& rows)
{
    constexpr std::size_t kShare = 64;
    constexpr std::size_t kMostHeld = 16384;
    const std::size_t all = rows.size();
    const std::size_t held = std::min(all / kShare, kMostHeld);
    std::minstd_rand random;
    std::erase_if(rows, [&](const auto&) { return random() % all >= held; });
}

/// Lets go of all copies. A copy that only another copy holds goes after its holder: then it is still held here while
/// the holder is destroyed, and destroying a chain doesn't nest. Objects are registered before or after what they refer
/// to, so that passes in both directions find the holders first. Where copies refer to each other in an order of no
/// pattern, passes find few: only some copies stay held then, and destruction nests no further than from one of them to
/// the next.
void Release(SharedRows rows)
{
    constexpr std::size_t kLeastPart = 16;   // of the rows, for another pass over all of them
    bool thinned = false;
    for (std::size_t before = rows.size(); ReleaseUnshared(rows); before = rows.size()) {
        std::reverse(rows.begin(), rows.end());
        if (!thinned && before - rows.size() < before / kLeastPart) {
            Thin(rows);
            thinned = true;
        }
    }
}
}   // namespace

DuplicationContextImpl::DuplicationContextImpl() = default;
DuplicationContextImpl::DuplicationContextImpl(const DuplicationContextImpl&) = default;

DuplicationContextImpl& DuplicationContextImpl::operator=(const DuplicationContextImpl& other)
{
    if (this == &other)
        return *this;
    auto newInstances = other.instances;
    auto newShared = other.sharedInstances;
    instances.Swap(newInstances);
    sharedInstances.Swap(newShared);
    Release(newShared.TakeRows());
    return *this;
}

DuplicationContextImpl::~DuplicationContextImpl()
{
    DeleteOwnedCopies();
    Release(sharedInstances.TakeRows());
}

void DuplicationContextImpl::DeleteOwnedCopies()
{
    auto& rows = instances.Rows();
    if (std::none_of(rows.begin(), rows.end(), [](const auto& row) { return row.value.owned; }))
        return;
    instances.SortBySource();
    // By number: a copy's destructor may still ask this context.
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (rows[row].value.owned)
            delete std::exchange(rows[row].value.copy, nullptr);
}

void DuplicationContextImpl::MapInstance(const IDuplicatable* source, IDuplicatable* copy, bool detached)
{
    if (InstanceEntry* const known = instances.Find(source)) {
        known->owned = known->owned && !detached;
        return;
    }
    instances.MakeRoom();
    instances.Add(source, {copy, !detached});
}

void DuplicationContextImpl::MapPtrInstance(const IDuplicatable* source, std::shared_ptr<IDuplicatable> copy)
{
    // All that can fail comes first. An earlier copy goes with the argument, when both maps are right again.
    auto* const known = sharedInstances.Find(source);
    if (!known)
        sharedInstances.MakeRoom();
    MapInstance(source, copy.get(), true);
    if (known)
        known->swap(copy);
    else
        sharedInstances.Add(source, std::move(copy));
}

IDuplicatable* DuplicationContextImpl::FindMappedInstance(const IDuplicatable* source, bool detach)
{
    InstanceEntry* const known = instances.Find(source);
    if (!known)
        return nullptr;
    known->owned = known->owned && !detach;
    return known->copy;
}

std::shared_ptr<IDuplicatable> DuplicationContextImpl::FindMappedPtrInstance(const IDuplicatable* source) const
{
    const auto* const known = sharedInstances.Find(source);
    return known ? *known : nullptr;
}

IDuplicatable* DuplicationContextImpl::FindOrDuplicateMappedInstance(
    const IDuplicatable* source, bool detach, IDuplicationContext& context)
{
    if (!source)
        return nullptr;
    if (IDuplicatable* const copy = FindMappedInstance(source, detach))
        return copy;
    // The map alone tells what the copy is: an object may register another one than it returns.
    source->Duplicate(&context);
    return FindMappedInstance(source, detach);
}

std::shared_ptr<IDuplicatable> DuplicationContextImpl::FindOrDuplicateMappedPtrInstance(
    const IDuplicatable* source, IDuplicationContext& context)
{
    if (!source)
        return nullptr;
    if (auto copy = FindMappedPtrInstance(source))
        return copy;
    return source->DuplicatePtr(&context);
}

}   // namespace TvlUtl

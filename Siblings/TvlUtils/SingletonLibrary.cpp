#include "siblings/TvlUtils/SingletonLibrary.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace TvlUtils {

namespace {
struct Row {
    SingletonLibrary entry;
    std::vector<basic_safe_function<void()>*> resets;
};

struct Table {
    ThreadLock lock;
    std::map<std::string, std::unique_ptr<Row>> rows;   // by the type's name: each module has a type object of its own
};

// Never destroyed: modules tear their entries down from exit lists that run in an order of their own.
Table& TheTable()
{
    static Table& table = *new Table;
    return table;
}

bool HasData(SingletonLibrary& entry)
{
    const ReadLock hold(entry.lock);
    return entry.data != nullptr;
}

/// Destroys an entry's block; the entry itself stays, since modules hold its address.
void TearDown(Row& row)
{
    for (auto* const reset : row.resets)
        (*reset)();
    const WriteLock hold(row.entry.lock);
    void* const data = std::exchange(row.entry.data, nullptr);
    row.entry.finalizerKey = 0;
    if (data && row.entry.deleter)
        row.entry.deleter(data);
}
}   // namespace

SingletonLibrary* SingletonLibrary::GetEntryForType(
    std::type_index type, void (*callback)(SingletonLibrary&, bool), bool create, basic_safe_function<void()>* reset)
{
    Row* row = nullptr;
    {
        Table& table = TheTable();
        const WriteLock hold(table.lock);
        auto found = table.rows.find(type.name());
        if (found == table.rows.end()) {
            if (!create)
                return nullptr;
            found = table.rows.emplace(type.name(), std::make_unique<Row>()).first;
        }
        row = found->second.get();
        if (!create && !HasData(row->entry))
            return nullptr;
        if (reset && std::find(row->resets.begin(), row->resets.end(), reset) == row->resets.end())
            row->resets.push_back(reset);
    }
    // Without the table's lock: the object's constructor may ask for other single objects.
    callback(row->entry, create);
    return &row->entry;
}

void SingletonLibrary::RemoveCallback(std::type_index type, unsigned long long reset)
{
    Table& table = TheTable();
    const WriteLock hold(table.lock);
    if (const auto found = table.rows.find(type.name()); found != table.rows.end())
        std::erase_if(found->second->resets,
            [&](const auto* kept) { return reinterpret_cast<unsigned long long>(kept) == reset; });
}

void SingletonLibrary::NotifySingletonModuleUnloaded(unsigned long long finalizerKey)
{
    std::vector<Row*> doomed;
    {
        Table& table = TheTable();
        const WriteLock hold(table.lock);
        for (const auto& [name, row] : table.rows)
            if (row->entry.finalizerKey == finalizerKey && row->entry.data)
                doomed.push_back(row.get());
    }
    for (Row* const row : doomed)
        TearDown(*row);
}

}   // namespace TvlUtils

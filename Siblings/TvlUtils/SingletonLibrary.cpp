#include "siblings/TvlUtils/SingletonLibrary.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TvlUtils {

namespace {
struct Row {
    SingletonLibrary entry;
    std::vector<basic_safe_function<void()>*> resets;   // one for each module that knows the type
};

// An entry's lock may be held while the table's is taken, because constructors ask for other single objects; never the
// other way round.
struct Table {
    ThreadLock lock;
    std::map<std::string, std::unique_ptr<Row>> rows;   // by Key
};

// Never destroyed: modules tear their entries down from exit lists that run in an order of their own.
Table& TheTable()
{
    static Table& table = *new Table;
    return table;
}

/// The type's name, since each module has a type object of its own that goes away with it. Types of unnamed namespaces
/// share names without being the same: theirs is told apart by where it lies.
std::string Key(std::type_index type)
{
    const std::string_view name = type.name();
    std::string key(name);
    if (name.find("_GLOBAL__N_") != name.npos)
        key += '@' + std::to_string(reinterpret_cast<unsigned long long>(name.data()));
    return key;
}

/// Destroys the block of a module's entry; the entry itself stays, since other modules hold its address.
void TearDown(Row& row, unsigned long long finalizerKey)
{
    const WriteLock hold(row.entry.lock);
    if (row.entry.finalizerKey != finalizerKey)
        return;
    {
        const ReadLock holdTable(TheTable().lock);
        for (auto* const reset : row.resets)
            (*reset)();
    }
    row.entry.finalizerKey = 0;
    if (void* const data = row.entry.data.exchange(nullptr))
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
        auto found = table.rows.find(Key(type));
        if (found == table.rows.end()) {
            if (!create)
                return nullptr;
            found = table.rows.emplace(Key(type), std::make_unique<Row>()).first;
        }
        row = found->second.get();
        if (!create && !row->entry.data)
            return nullptr;
        if (reset && std::find(row->resets.begin(), row->resets.end(), reset) == row->resets.end())
            row->resets.push_back(reset);
    }
    callback(row->entry, create);
    return &row->entry;
}

void SingletonLibrary::RemoveCallback(std::type_index type, unsigned long long reset)
{
    Table& table = TheTable();
    const WriteLock hold(table.lock);
    if (const auto found = table.rows.find(Key(type)); found != table.rows.end())
        std::erase_if(found->second->resets,
            [&](const auto* kept) { return reinterpret_cast<unsigned long long>(kept) == reset; });
}

void SingletonLibrary::NotifySingletonModuleUnloaded(unsigned long long finalizerKey)
{
    std::vector<Row*> doomed;
    {
        Table& table = TheTable();
        const ReadLock hold(table.lock);
        for (const auto& [key, row] : table.rows)
            if (row->entry.finalizerKey == finalizerKey)
                doomed.push_back(row.get());
    }
    for (Row* const row : doomed)
        TearDown(*row, finalizerKey);
}

}   // namespace TvlUtils

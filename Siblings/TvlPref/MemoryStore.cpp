// A registry's keys and values in memory.
#include "siblings/TvlPref/StoredRegistry.h"

#include "TvlPref/FoldedName.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>

namespace PREFUTILS {

namespace {
struct Key {
    std::wstring name;
    RegistryStore::KeyId id = 0;
    Key* parent = nullptr;
    std::map<std::wstring, std::unique_ptr<Key>, std::less<>> subkeys;   // by folded name
    std::map<std::wstring, std::pair<std::wstring, RegistryValue>> values;
};

class MemoryStore final : public RegistryStore {
public:
    KeyId FindKey(std::wstring_view path) override
    {
        bool created = false;
        Key* const key = Walk(path, false, created);
        return key ? key->id : 0;
    }

    KeyId CreateKey(std::wstring_view path, bool& created) override { return Walk(path, true, created)->id; }
    bool KeyLives(KeyId key) override { return m_byId.contains(key); }

    void DeleteTree(std::wstring_view path) override
    {
        bool created = false;
        Key* const key = Walk(path, false, created);
        if (!key)
            return;
        // All names before anything is taken away: memory may run out in between.
        std::vector<std::pair<Key*, std::wstring>> doomed;
        doomed.emplace_back(key, FoldedName(key->name));
        for (std::size_t i = 0; i < doomed.size(); ++i)
            for (const auto& [folded, subkey] : doomed[i].first->subkeys)
                doomed.emplace_back(subkey.get(), folded);
        // From the leaves up, so that a deep tree is not destroyed by recursion.
        for (auto last = doomed.rbegin(); last != doomed.rend(); ++last) {
            m_byId.erase(last->first->id);
            last->first->parent->subkeys.erase(last->second);
        }
    }

    std::optional<std::wstring> SubkeyName(KeyId key, DWORD index) override
    {
        const Key* const live = Live(key);
        if (!live || index >= live->subkeys.size())
            return std::nullopt;
        return std::next(live->subkeys.begin(), static_cast<std::ptrdiff_t>(index))->second->name;
    }

    std::optional<std::pair<std::wstring, RegistryValue>> ValueAt(KeyId key, DWORD index) override
    {
        const Key* const live = Live(key);
        if (!live || index >= live->values.size())
            return std::nullopt;
        return std::next(live->values.begin(), static_cast<std::ptrdiff_t>(index))->second;
    }

    std::optional<RegistryValue> Value(KeyId key, std::wstring_view name) override
    {
        const Key* const live = Live(key);
        if (!live)
            return std::nullopt;
        const auto found = live->values.find(FoldedName(name));
        return found == live->values.end() ? std::nullopt : std::optional(found->second.second);
    }

    bool SetValue(KeyId key, std::wstring_view name, const RegistryValue& value) override
    {
        Key* const live = Live(key);
        if (!live)
            return false;
        RegistryValue stored = value;
        const auto place = live->values.try_emplace(FoldedName(name), name, RegistryValue()).first;
        place->second.second = std::move(stored);
        return true;
    }

    bool DeleteValue(KeyId key, std::wstring_view name) override
    {
        Key* const live = Live(key);
        return live && live->values.erase(FoldedName(name)) > 0;
    }

private:
    /// Null when the key has been deleted.
    Key* Live(KeyId key) const
    {
        const auto found = m_byId.find(key);
        return found == m_byId.end() ? nullptr : found->second;
    }

    Key* Walk(std::wstring_view path, bool create, bool& created)
    {
        // As long as the path, of which each character folds by itself.
        const std::wstring foldedPath = FoldedName(path);
        Key* key = &m_root;
        for (std::size_t begin = 0, end = 0; begin < path.size(); begin = end + 1) {
            end = std::min(path.find(L'\\', begin), path.size());
            const auto folded = std::wstring_view(foldedPath).substr(begin, end - begin);
            auto& subkeys = key->subkeys;
            auto found = subkeys.find(folded);
            if (found == subkeys.end()) {
                const bool isRoot = begin == 0;   // these are always there
                if (!create && !isRoot)
                    return nullptr;
                auto made = std::make_unique<Key>(
                    Key{std::wstring(path.substr(begin, end - begin)), m_lastId + 1, key, {}, {}});
                // An id that fails here has not been given to anybody, and is taken by the next key.
                m_byId.insert_or_assign(made->id, made.get());
                found = subkeys.emplace(folded, std::move(made)).first;
                ++m_lastId;
                created = true;
            }
            key = found->second.get();
        }
        return key;
    }

    Key m_root;
    KeyId m_lastId = 0;
    std::unordered_map<KeyId, Key*> m_byId;
};
}   // namespace

std::unique_ptr<RegistryStore> MakeMemoryStore() { return std::make_unique<MemoryStore>(); }

}   // namespace PREFUTILS

#include "siblings/TvlPref/RegistryPrefStore.h"

#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlConfig/ProductKey.h"
#include "siblings/TvlPref/IRegistry.h"
#include "siblings/TvlPref/PrefText.h"

#include <algorithm>

namespace {
using PREFUTILS::IRegistry;

constexpr DWORD kCurrentUser = 0x80000001;   // HKEY_CURRENT_USER

/// Where the value of a preference stands.
struct Place {
    std::wstring key;
    std::wstring value;

    explicit Place(const TvlString& name)
    {
        std::wstring path = name.Std();
        std::replace(path.begin(), path.end(), L'/', L'\\');
        const std::size_t slash = path.rfind(L'\\');
        const bool hasGroup = slash != std::wstring::npos;
        value = hasGroup ? path.substr(slash + 1) : path;
        key = TvlString()
                  .Format(L"%s\\%s\\Application Preferences", INIGetRegistryProductKey(),
                      ApplicationInfo::Settings().GetRegistryName())
                  .Std();
        if (hasGroup)
            key += L'\\' + path.substr(0, slash);
    }
};

/// An open key; null when it could not be opened.
class Key {
public:
    Key(const Place& place, DWORD access, bool create)
    {
        const HKEY root = PREFUTILS::RegistryRoot(kCurrentUser);
        const LONG status = create
            ? m_registry.RegCreateKeyExW(root, place.key.c_str(), 0, nullptr, 0, access, nullptr, &m_key, nullptr)
            : m_registry.RegOpenKeyExW(root, place.key.c_str(), 0, access, &m_key);
        if (status != PREFUTILS::kRegistryOk)
            m_key = nullptr;
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key()
    {
        if (m_key)
            m_registry.RegCloseKey(m_key);
    }

    explicit operator bool() const { return m_key != nullptr; }
    HKEY Handle() const { return m_key; }
    IRegistry& Registry() const { return m_registry; }

private:
    IRegistry& m_registry = IRegistry::GetInstance();
    HKEY m_key = nullptr;
};

/// The text of a value; another process may make it longer between the question for its size and the answer.
std::optional<std::wstring> ReadText(const Key& key, const std::wstring& name)
{
    std::wstring text(128, L'\0');
    for (;;) {
        auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        DWORD type = 0;
        const LONG status = key.Registry().RegQueryValueExW(
            key.Handle(), name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
        if (status != PREFUTILS::kRegistryMoreData) {
            if (status != PREFUTILS::kRegistryOk || type != PREFUTILS::kRegistryText)
                return std::nullopt;
            text.resize(size / sizeof(wchar_t));
            return text.substr(0, text.find(L'\0'));   // an end mark may be stored or not
        }
        text.resize(std::max<std::size_t>(text.size() * 2, size / sizeof(wchar_t) + 1));
    }
}
}   // namespace

std::optional<PrefValue> RegistryPrefStore::Read(const TvlString& name) const
{
    const Place place(name);
    const Key key(place, PREFUTILS::kRegistryRead, false);
    const auto text = key ? ReadText(key, place.value) : std::nullopt;
    return text ? std::optional<PrefValue>(TvlPref::DecodeText(*text)) : std::nullopt;
}

bool RegistryPrefStore::Write(const TvlString& name, const PrefValue& value)
{
    const Place place(name);
    const Key key(place, PREFUTILS::kRegistryReadWrite, true);
    const TvlString text = TvlPref::EncodeText(TvlPref::ToText(value));
    const auto size = static_cast<DWORD>((text.Std().size() + 1) * sizeof(wchar_t));
    return key
        && key.Registry().RegSetValueExW(key.Handle(), place.value.c_str(), 0, PREFUTILS::kRegistryText,
               reinterpret_cast<const BYTE*>(text.c_str()), size)
        == PREFUTILS::kRegistryOk;
}

bool RegistryPrefStore::Remove(const TvlString& name)
{
    const Place place(name);
    const Key key(place, PREFUTILS::kRegistryReadWrite, false);
    if (!key)
        return true;
    const LONG status = key.Registry().RegDeleteValueW(key.Handle(), place.value.c_str());
    return status == PREFUTILS::kRegistryOk || status == PREFUTILS::kRegistryNotFound;
}

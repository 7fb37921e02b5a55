#include "StoredLanguage.h"

#include "siblings/TvlConfig/ProductKey.h"
#include "siblings/TvlPref/IRegistry.h"

#include <cstring>
#include <cwchar>
#include <optional>

namespace StoredLanguage {

namespace {
using namespace PREFUTILS;

constexpr DWORD kUser = 0x80000001;      // HKEY_CURRENT_USER
constexpr DWORD kMachine = 0x80000002;   // HKEY_LOCAL_MACHINE
constexpr const wchar_t* kLanguage = L"UILang";
constexpr const wchar_t* kQueryStartup = L"QueryStartupLang";
constexpr const wchar_t* kShowSelection = L"ShowLangSelection";

/// The product's key, open as long as the object lives.
class ProductKey {
public:
    static ProductKey ForReading(DWORD root)
    {
        HKEY key = nullptr;
        const LONG status = IRegistry::GetInstance().RegOpenKeyExW(
            RegistryRoot(root), INIGetRegistryProductKey().c_str(), 0, kRegistryRead, &key);
        return ProductKey(status == kRegistryOk ? key : nullptr);
    }
    static ProductKey ForWriting()
    {
        HKEY key = nullptr;
        const LONG status = IRegistry::GetInstance().RegCreateKeyExW(RegistryRoot(kUser),
            INIGetRegistryProductKey().c_str(), 0, nullptr, 0, kRegistryReadWrite, nullptr, &key, nullptr);
        return ProductKey(status == kRegistryOk ? key : nullptr);
    }
    ProductKey(const ProductKey&) = delete;
    ProductKey& operator=(const ProductKey&) = delete;
    ~ProductKey()
    {
        if (m_key)
            IRegistry::GetInstance().RegCloseKey(m_key);
    }

    bool Has(const wchar_t* name) const
    {
        return m_key
            && IRegistry::GetInstance().RegQueryValueExW(m_key, name, nullptr, nullptr, nullptr, nullptr)
            == kRegistryOk;
    }
    /// The bytes of a value of this type; empty when there is none, or it is longer than `Size`.
    template <std::size_t Size>
    std::optional<DWORD> Read(const wchar_t* name, DWORD type, BYTE (&bytes)[Size]) const
    {
        DWORD found = 0;
        DWORD size = Size;
        if (!m_key
            || IRegistry::GetInstance().RegQueryValueExW(m_key, name, nullptr, &found, bytes, &size) != kRegistryOk
            || found != type)
            return std::nullopt;
        return size;
    }
    bool Write(const wchar_t* name, DWORD type, const void* bytes, std::size_t size)
    {
        return m_key
            && IRegistry::GetInstance().RegSetValueExW(
                   m_key, name, 0, type, static_cast<const BYTE*>(bytes), static_cast<DWORD>(size))
            == kRegistryOk;
    }
    void Delete(const wchar_t* name)
    {
        if (m_key)
            IRegistry::GetInstance().RegDeleteValueW(m_key, name);
    }

private:
    explicit ProductKey(HKEY key) : m_key(key) { }

    HKEY m_key;
};

bool ReadSwitch(DWORD root, const wchar_t* name)
{
    BYTE bytes[sizeof(DWORD)] = {};
    const auto size = ProductKey::ForReading(root).Read(name, kRegistryDword, bytes);
    DWORD value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return size == sizeof value && value != 0;
}
}   // namespace

CGlbLang Read()
{
    constexpr std::size_t kLength = 3;
    // With room for an end mark, which other programs write.
    BYTE bytes[(kLength + 1) * sizeof(wchar_t)];
    const auto size = ProductKey::ForReading(kUser).Read(kLanguage, kRegistryText, bytes);
    wchar_t text[kLength + 2] = {};
    if (size)
        std::memcpy(text, bytes, *size);
    CGlbLang language;
    language.SetFromIO_StrFmt(text);
    return language;
}

bool Write(CGlbLang language)
{
    const TvlString text = language.GetIO_StrFmt();
    if (text.IsEmpty())
        return false;
    // Without its end mark, as every reader of the suite expects.
    return ProductKey::ForWriting().Write(
        kLanguage, kRegistryText, text.c_str(), std::wcslen(text.c_str()) * sizeof(wchar_t));
}

bool HasQueryStartup() { return ProductKey::ForReading(kUser).Has(kQueryStartup); }
bool ReadQueryStartup() { return ReadSwitch(kUser, kQueryStartup); }

void WriteQueryStartup(bool on)
{
    const DWORD value = on;
    ProductKey::ForWriting().Write(kQueryStartup, kRegistryDword, &value, sizeof value);
}

bool ReadShowSelection() { return ReadSwitch(kMachine, kShowSelection); }

void Forget()
{
    ProductKey key = ProductKey::ForWriting();
    key.Delete(kLanguage);
    key.Delete(kQueryStartup);
}

}   // namespace StoredLanguage

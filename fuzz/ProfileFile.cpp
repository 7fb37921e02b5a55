// Profile files: any bytes can be read, come back unchanged, and take a new value without losing another.
#include "siblings/TvlUtils/ProfileText.h"

#include <algorithm>
#include <cstdint>

namespace {
using TvlUtils::ProfileText;

constexpr std::size_t kMostLookedAt = 8;   // sections, and keys of each

void Require(bool holds)
{
    if (!holds)
        __builtin_trap();
}

void LookAround(const ProfileText& profile)
{
    auto sections = profile.Sections();
    sections.resize(std::min(sections.size(), kMostLookedAt));
    for (const std::wstring& section : sections) {
        auto keys = profile.Keys(section);
        keys.resize(std::min(keys.size(), kMostLookedAt));
        for (const std::wstring& key : keys)
            Require(profile.Value(section, key).has_value());
    }
}

void Change(std::string_view bytes)
{
    ProfileText profile(bytes);
    const std::size_t sections = profile.Sections().size();
    const bool isNew = !profile.Value(L"fuzz section", L"fuzz key");
    Require(profile.SetValue(L"fuzz section", L"fuzz key", L"value"));
    const ProfileText again(profile.Bytes());
    Require(again.Value(L"FUZZ SECTION", L"Fuzz Key") == L"value");
    Require(again.Sections().size() - sections <= 1);
    profile.DeleteKey(L"fuzz section", L"fuzz key");
    Require(!isNew || !profile.Value(L"fuzz section", L"fuzz key"));
    profile.DeleteSection(L"fuzz section");
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > ProfileText::kMaxBytes)
        return 0;   // no reader of files gives it so many
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const ProfileText profile(bytes);
    LookAround(profile);
    const bool isUtf16 = bytes.starts_with("\xFF\xFE");   // what is not valid in it becomes a replacement
    Require(isUtf16 || profile.Bytes() == bytes);
    Require(ProfileText(profile.Bytes()).Bytes() == profile.Bytes());
    Change(bytes);
    return 0;
}

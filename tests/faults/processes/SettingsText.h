// Settings of which every value tells whose they are and how old: a part of them, or a mixture, is seen as such.
#pragma once

#include <cstdlib>
#include <map>
#include <string>

inline constexpr int kSettings = 21;   // values of the section "Test"; the first two are "Name" and "Age"
inline constexpr const wchar_t* kOtherEntry = L"content/other.txt";   // what a workspace holds beside its settings
inline constexpr const char* kOtherContent = "other";
inline constexpr const char* kTorn = "torn";
inline constexpr const char* kNoSettings = "?";

/// Whose settings they are, and how often they were changed since.
struct SettingsOwner {
    std::string name;   // of a workspace
    int age = 0;

    /// False when they are nobody's, or a mixture.
    bool IsAWorkspace() const { return name != kTorn && name != kNoSettings; }
    /// The name and the age with a blank between them.
    std::string Text() const { return name + " " + std::to_string(age); }
};

/// The value of a name from "Value2" on.
inline std::string SettingOf(const SettingsOwner& owner, int number)
{
    return owner.Text() + " " + std::to_string(number) + " " + std::string(50, 'v');
}

inline std::string SettingsText(const SettingsOwner& owner)
{
    std::string text = "[Test]\r\nName=" + owner.name + "\r\nAge=" + std::to_string(owner.age) + "\r\n";
    for (int i = 2; i < kSettings; ++i)
        text += "Value" + std::to_string(i) + "=" + SettingOf(owner, i) + "\r\n";
    return text;
}

/// Whose the values of a section are; `kNoSettings` when there are none, `kTorn` when they are not all of one owner's.
inline SettingsOwner OwnerOf(const std::map<std::string, std::string>& values)
{
    if (values.empty())
        return {kNoSettings};
    const auto valueOf = [&](const std::string& name) {
        const auto found = values.find(name);
        return found == values.end() ? std::string() : found->second;
    };
    const SettingsOwner owner{valueOf("Name"), std::atoi(valueOf("Age").c_str())};
    bool isWhole = !owner.name.empty() && std::to_string(owner.age) == valueOf("Age") && values.size() == kSettings;
    for (int i = 2; i < kSettings; ++i)
        isWhole = isWhole && valueOf("Value" + std::to_string(i)) == SettingOf(owner, i);
    return isWhole ? owner : SettingsOwner{kTorn};
}

#include "RegistryText.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cstdio>

namespace {
std::string Hexadecimal(const std::uint8_t* bytes, std::size_t size, char separator)
{
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", bytes[i]);
        if (i > 0)
            text += separator;
        text += digits;
    }
    return text;
}

std::string Quoted(const std::wstring& text)
{
    std::string quoted = "\"";
    for (const char c : TvlPlatform::ToUtf8(text)) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted + "\"";
}

/// Bytes as every machine has them in its registry: texts are UTF-16LE.
std::vector<std::uint8_t> StoredBytes(const RegistryEntry& value)
{
    if (!value.IsText())
        return {value.data.begin(), value.data.end()};
    std::wstring text = value.Text() + L'\0';
    if (value.type == PREFUTILS::kRegistryTextList)
        text += L'\0';
    return TvlPlatform::ToUtf16Le(text);
}

std::string ExportedValue(const RegistryEntry& value)
{
    const std::wstring text = value.Text();
    const bool isOneLine =
        std::none_of(text.begin(), text.end(), [](wchar_t c) { return static_cast<std::uint32_t>(c) < L' '; });
    if (value.type == PREFUTILS::kRegistryText && isOneLine)
        return Quoted(text);
    if (const auto number = value.Number()) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%08lx", static_cast<unsigned long>(*number));
        return std::string("dword:") + digits;
    }
    char type[9];
    std::snprintf(type, sizeof type, "%lx", static_cast<unsigned long>(value.type));
    const std::string form = value.type == PREFUTILS::kRegistryBinary ? "hex:" : "hex(" + std::string(type) + "):";
    const auto bytes = StoredBytes(value);
    return form + Hexadecimal(bytes.data(), bytes.size(), ',');
}
}   // namespace

std::string ShowRegistryValue(const RegistryEntry& value)
{
    if (const auto number = value.Number())
        return std::to_string(*number);
    if (!value.IsText())
        return Hexadecimal(value.data.data(), value.data.size(), ' ');
    std::wstring text = value.Text();
    std::replace(text.begin(), text.end(), L'\0', L'\n');
    return TvlPlatform::ToUtf8(text);
}

std::string ExportRegistryKey(const std::string& path)
{
    std::string text = "Windows Registry Editor Version 5.00\n";
    std::vector<std::string> waiting{TvlPlatform::ToUtf8(FullRegistryPath(path))};
    while (!waiting.empty()) {
        const RegistryKey key = RegistryKey::Open(waiting.back(), PREFUTILS::kRegistryRead);
        waiting.pop_back();
        const std::string name = TvlPlatform::ToUtf8(key.Path());
        text += "\n[" + name + "]\n";
        for (const RegistryEntry& value : key.Values())
            text += (value.name.empty() ? "@" : Quoted(value.name)) + "=" + ExportedValue(value) + "\n";
        const auto subkeys = key.Subkeys();
        for (auto subkey = subkeys.rbegin(); subkey != subkeys.rend(); ++subkey)
            waiting.push_back(name + "\\" + TvlPlatform::ToUtf8(*subkey));
    }
    return text;
}

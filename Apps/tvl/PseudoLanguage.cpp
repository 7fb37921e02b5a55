#include "PseudoLanguage.h"

#include "TextConversions.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>

namespace {
namespace fs = std::filesystem;

constexpr const char* kTypedFile = "parser.json";
constexpr const char* kNameFiles[] = {"units.json", "measures.json"};
constexpr const char* kCode = "XXX";   // of no language of Windows

// A letter of its own for each, so that names that differ do so with accents too.
constexpr std::string_view kSmall[] = {"á", "ƀ", "ç", "ð", "é", "ƒ", "ĝ", "ĥ", "î", "ĵ", "ķ", "ļ", "ḿ", "ñ", "ö", "þ",
    "ǫ", "ŕ", "š", "ţ", "û", "ṽ", "ŵ", "ẋ", "ý", "ž"};
constexpr std::string_view kCapital[] = {"Á", "Ɓ", "Ç", "Ð", "É", "Ƒ", "Ĝ", "Ĥ", "Î", "Ĵ", "Ķ", "Ļ", "Ḿ", "Ñ", "Ö", "Þ",
    "Ǫ", "Ŕ", "Š", "Ţ", "Û", "Ṽ", "Ŵ", "Ẋ", "Ý", "Ž"};

std::string Accented(const std::string& text)
{
    std::string accented;
    for (const char c : text) {
        if (c >= 'a' && c <= 'z')
            accented += kSmall[c - 'a'];
        else if (c >= 'A' && c <= 'Z')
            accented += kCapital[c - 'A'];
        else
            accented += c;
    }
    return accented;
}

/// Accents on all but the conversions.
std::string AccentedForm(const std::string& text)
{
    std::string accented;
    std::size_t at = 0;
    for (const TextConversion& conversion : ConversionsOf(text, false)) {
        accented += Accented(text.substr(at, conversion.begin - at));
        accented += text.substr(conversion.begin, conversion.end - conversion.begin);
        at = conversion.end;
    }
    return accented + Accented(text.substr(at));
}

std::string PseudoText(const std::string& file, const std::string& text)
{
    if (file == kTypedFile)
        return text;
    for (const char* const names : kNameFiles)
        if (file == names)
            return Accented(text);
    return '[' + AccentedForm(text) + std::string((text.size() + 2) / 3, '~') + ']';
}

void Write(const fs::path& path, const nlohmann::ordered_json& json)
{
    std::ofstream file(path, std::ios::binary);
    file << json.dump(4) << '\n';
    file.close();
    if (!file)
        throw std::runtime_error("\"" + path.filename().string() + "\" can't be written");
}
}   // namespace

LanguageTexts PseudoTexts(const LanguageTexts& english)
{
    LanguageTexts texts;
    for (const auto& [file, keys] : english)
        for (const auto& [key, text] : keys)
            texts[file][key] = PseudoText(file, text);
    return texts;
}

void WritePseudoLanguage(const fs::path& folder, const LanguageTexts& english)
{
    std::error_code failed;
    fs::create_directories(folder / "Data" / "Texts", failed);
    if (failed)
        throw std::runtime_error("the folder can't be made: " + failed.message());
    for (const auto& [file, texts] : PseudoTexts(english))
        Write(folder / "Data" / "Texts" / file, {{"version", 1}, {"texts", texts}});
    Write(folder / "Data" / "info.json",
        {{"langCode", kCode}, {"dirName", LanguageFolderName(folder)}, {"uiName", "[Þšéûðö-ļáñĝûáĝé~~~~~]"}});
}

#include "LanguageTexts.h"

#include "TextConversions.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

namespace {
namespace fs = std::filesystem;
using nlohmann::json;
using TvlUtils::SystemIO::FromFilePath;

constexpr int kFormatVersion = 1;
constexpr std::size_t kLongestName = 20;   // characters of a unit's name that the library keeps
constexpr std::size_t kLongestList = 16;   // characters of a list whose comma follows the user's list separator
constexpr std::size_t kCodeLength = 3;

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

/// What a file says, with the keys that stand in one object twice.
json Parse(const fs::path& path, std::vector<std::string>& repeated)
{
    std::vector<std::set<std::string>> keys;
    const auto note = [&](int, json::parse_event_t event, json& value) {
        if (event == json::parse_event_t::object_start)
            keys.emplace_back();
        else if (event == json::parse_event_t::object_end)
            keys.pop_back();
        else if (event == json::parse_event_t::key && !keys.back().insert(value.get<std::string>()).second)
            repeated.push_back(value.get<std::string>());
        return true;
    };
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("it can't be read");
    return json::parse(file, note);
}

std::string NameOf(const fs::path& path) { return TvlPlatform::ToUtf8(FromFilePath(path.filename())); }

std::map<std::string, std::string> ReadFile(const fs::path& path, LanguageFaults& faults)
{
    const std::string name = NameOf(path);
    std::map<std::string, std::string> texts;
    try {
        std::vector<std::string> repeated;
        const json file = Parse(path, repeated);
        for (const std::string& key : repeated)
            faults.push_back(name + ": " + key + ": the key stands there twice");
        if (file.at("version") != kFormatVersion)
            throw std::runtime_error("its version is not 1");
        if (!file.at("texts").is_object())
            throw std::runtime_error("its texts are not by key");
        for (const auto& [key, text] : file.at("texts").items())
            if (text.is_string())
                texts.emplace(key, text.get<std::string>());
            else
                faults.push_back(name + ": " + key + ": this is no text");
    } catch (const std::exception& failure) {
        faults.push_back(name + ": " + failure.what());
    }
    return texts;
}

std::string Listed(const std::vector<std::string>& arguments)
{
    std::string list;
    for (const std::string& argument : arguments)
        list += (list.empty() ? "%" : ", %") + argument;
    return list.empty() ? "none" : list;
}

/// The comma of a list has nothing behind it but the next item; that of a sentence has a blank.
bool IsList(const std::string& english)
{
    const std::size_t comma = english.find(',');
    return comma != std::string::npos && comma + 1 < english.size() && english[comma + 1] != ' ';
}

std::size_t Length(const std::string& text) { return TvlPlatform::FromUtf8(text).size(); }

/// One text beside its English one.
class TextComparison {
public:
    TextComparison(std::string place, const std::string& text, const std::string& english, LanguageFaults& faults)
        : m_place(std::move(place)), m_text(text), m_english(english), m_faults(faults)
    {
    }

    void CheckAll(bool isName)
    {
        CheckEmpty();
        CheckForm();
        if (IsList(m_english))
            CheckList();
        else if (isName && Length(m_text) > kLongestName)
            Fault("only " + std::to_string(kLongestName) + " characters of this name are shown");
    }

private:
    void Fault(const std::string& problem) { m_faults.push_back(m_place + Quoted(m_text) + ": " + problem); }
    void CheckEmpty()
    {
        const auto isBlank = [](const std::string& text) { return text.find_first_not_of(" \t\r\n") == text.npos; };
        if (m_text.empty() || (isBlank(m_text) && !isBlank(m_english)))
            Fault("the text is empty");
    }
    void CheckForm()
    {
        const auto wanted = ArgumentsOf(m_english, true);
        const auto found = ArgumentsOf(m_text, !wanted.empty());
        if (found != wanted)
            Fault("takes the arguments " + Listed(found) + " where the English text takes " + Listed(wanted));
    }
    void CheckList()
    {
        const auto wanted = std::count(m_english.begin(), m_english.end(), ',');
        const auto found = std::count(m_text.begin(), m_text.end(), ',');
        if (found != wanted)
            Fault(
                "this list needs " + std::to_string(wanted + 1) + " items with a comma between them, without a blank");
        if (Length(m_text) > kLongestList)
            Fault("this list may have no more than " + std::to_string(kLongestList) + " characters");
    }

    std::string m_place;
    const std::string& m_text;
    const std::string& m_english;
    LanguageFaults& m_faults;
};

/// The string of a key that is not empty.
std::string CheckString(const json& info, const char* key, LanguageFaults& faults)
{
    const auto found = info.find(key);
    if (found == info.end() || !found->is_string() || found->get<std::string>().empty()) {
        faults.push_back(std::string("info.json: ") + key + ": this string is missing");
        return {};
    }
    return found->get<std::string>();
}

bool IsCode(const std::string& code)
{
    return code.size() == kCodeLength && std::all_of(code.begin(), code.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    });
}
}   // namespace

std::string LanguageFolderName(const fs::path& folder)
{
    // With or without a separator behind it.
    return NameOf((fs::absolute(folder).lexically_normal() / "").parent_path());
}

LanguageTexts ReadLanguageTexts(const fs::path& folder, LanguageFaults& faults)
{
    LanguageTexts texts;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(folder / "Data" / "Texts", failed))
        if (entry.path().extension() == ".json")
            texts.emplace(NameOf(entry.path()), ReadFile(entry.path(), faults));
    if (failed)
        faults.push_back("Data/Texts: the folder can't be read");
    return texts;
}

void CompareTexts(const LanguageTexts& texts, const LanguageTexts& english, LanguageFaults& faults)
{
    static const std::map<std::string, std::string> none;
    const auto in = [](const LanguageTexts& files, const std::string& name) -> const auto&
    {
        const auto found = files.find(name);
        return found == files.end() ? none : found->second;
    };
    for (const auto& [name, keys] : english) {
        if (!texts.contains(name)) {
            faults.push_back(name + ": the file is missing");
            continue;
        }
        const bool areNames = name == "units.json" || name == "measures.json";
        for (const auto& [key, text] : keys) {
            const auto found = in(texts, name).find(key);
            if (found == in(texts, name).end())
                faults.push_back(name + ": " + key + ": the text for " + Quoted(text) + " is missing");
            else
                TextComparison(name + ": " + key + ": ", found->second, text, faults).CheckAll(areNames);
        }
    }
    for (const auto& [name, keys] : texts)
        for (const auto& [key, text] : keys)
            if (!in(english, name).contains(key))
                faults.push_back(name + ": " + key + ": " + Quoted(text) + " has no English text in this file");
}

void CheckLanguageInfo(const fs::path& folder, LanguageFaults& faults)
try {
    std::vector<std::string> repeated;
    const json info = Parse(folder / "Data" / "info.json", repeated);
    for (const std::string& key : repeated)
        faults.push_back("info.json: " + key + ": the key stands there twice");
    if (!info.is_object())
        throw std::runtime_error("this is no object");
    if (const std::string code = CheckString(info, "langCode", faults); !code.empty() && !IsCode(code))
        faults.push_back("info.json: langCode: " + Quoted(code) + " is no code of three letters or digits");
    CheckString(info, "uiName", faults);
    const std::string own = LanguageFolderName(folder);
    if (const std::string name = CheckString(info, "dirName", faults); !name.empty() && name != own)
        faults.push_back("info.json: dirName: " + Quoted(name) + " is not the folder's own name " + Quoted(own));
} catch (const std::exception& failure) {
    faults.push_back(std::string("info.json: ") + failure.what());
}

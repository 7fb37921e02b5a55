// Texts by key, from the JSON files of the suite's language folders.
#include "siblings/TvlResources/Resources.h"

#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <unordered_map>

namespace Framework::Resources {

namespace {
using Texts = std::unordered_map<TvlString, TvlString>;
using TvlUtils::SystemIO::FromFilePath;
using TvlUtils::SystemIO::ToFilePath;
namespace fs = std::filesystem;

constexpr const wchar_t* kFallbackFolder = L"EN";
constexpr int kFormatVersion = 1;

std::mutex textsLock;
std::shared_ptr<const Texts> currentTexts;
std::wstring currentFolder = kFallbackFolder;
std::atomic<unsigned> generation = 1;

/// Under what a library's number is kept among the texts: no key has a blank.
TvlString LegacyName(const TvlString& library, ULONG id) { return TvlString().Format(L"%s %u", library, id); }

/// Adds the numbers of libraries: {"library": {"101": key}}.
void ReadLegacy(const nlohmann::json& legacy, Texts& texts)
{
    for (const auto& [library, keys] : legacy.items())
        for (const auto& [id, key] : keys.items())
            texts.emplace(LegacyName(TvlPlatform::FromUtf8(library), static_cast<ULONG>(std::stoul(id))),
                TvlPlatform::FromUtf8(key.get<std::string>()));
}

/// Adds the texts of one file; those that are there already stay.
void ReadFile(const fs::path& path, Texts& texts)
{
    try {
        const auto file = nlohmann::json::parse(std::ifstream(path, std::ios::binary));
        if (file.at("version").get<int>() != kFormatVersion)
            throw std::runtime_error("unknown version");
        for (const auto& [key, text] : file.at("texts").items())
            texts.emplace(TvlPlatform::FromUtf8(key), TvlPlatform::FromUtf8(text.get<std::string>()));
        if (const auto legacy = file.find("legacy"); legacy != file.end())
            ReadLegacy(*legacy, texts);
    } catch (const std::exception& failure) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error,
            TvlString().Format(L"texts of \"%s\" can't be read: %S", FromFilePath(path), failure.what()));
    }
}

void ReadFolder(const std::wstring& folder, Texts& texts)
{
    const fs::path path = ToFilePath(TvlConfig::GetSuiteDir()) / "Languages" / ToFilePath(folder) / "Data" / "Texts";
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(path, failed))
        if (entry.path().extension() == ".json")
            ReadFile(entry.path(), texts);
    if (failed)
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error, TvlString().Format(L"no texts in \"%s\"", FromFilePath(path)));
}

std::shared_ptr<const Texts> CurrentTexts()
{
    const std::lock_guard hold(textsLock);
    if (!currentTexts) {
        auto texts = std::make_shared<Texts>();
        ReadFolder(currentFolder, *texts);
        if (currentFolder != kFallbackFolder)
            ReadFolder(kFallbackFolder, *texts);
        currentTexts = std::move(texts);
    }
    return currentTexts;
}
}   // namespace

TvlString GetString(const TvlString& key)
{
    const auto texts = CurrentTexts();
    const auto found = texts->find(key);
    return found == texts->end() ? TvlString() : found->second;
}

TvlString GetLegacyGuid(const TvlString& library, ULONG id) { return GetString(LegacyName(library, id)); }
TvlString GetLegacyString(const TvlString& key) { return GetString(key); }

TvlString GetCaption(const TvlString& key) { return GetString(key + L".caption"); }

int GetStringIntoBuffer(const TvlString& key, wchar_t* buffer, int size)
{
    if (size < 1)
        return 0;
    const TvlString text = GetString(key).Left(size - 1);
    std::copy_n(text.c_str(), text.GetLength() + 1, buffer);
    return text.GetLength();
}

void SetLanguageFolder(const TvlString& folder)
{
    const std::lock_guard hold(textsLock);
    currentFolder = folder.Std();
    currentTexts.reset();
    ++generation;
}

unsigned Generation() { return generation.load(std::memory_order_acquire); }

}   // namespace Framework::Resources

// Texts by key, from the JSON files of the suite's language folders.
#include "siblings/TvlResources/Resources.h"

#include "TvlUtils/FileAccess.h"
#include "Windows/SystemFiles.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/Json.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace Framework::Resources {

namespace {
using Texts = std::unordered_map<TvlString, TvlString>;
using TvlUtils::SystemIO::FromFilePath;
using TvlUtils::SystemIO::ToFilePath;
using TvlUtils::SystemIO::Within;
namespace fs = std::filesystem;
namespace Json = TvlUtils::Json;

constexpr const wchar_t* kFallbackFolder = L"EN";
constexpr double kFormatVersion = 1;
constexpr Json::Limits kLimits{.bytes = std::size_t{16} << 20, .depth = 8};   // far more than any translation has

std::mutex textsLock;
std::shared_ptr<const Texts> currentTexts;
std::wstring currentFolder = kFallbackFolder;
std::atomic<unsigned> generation = 1;

/// Under what a library's number is kept among the texts: no key has a blank.
TvlString LegacyName(const TvlString& library, ULONG id) { return TvlString().Format(L"%s %u", library, id); }

/// A member of a kind; throws std::runtime_error without one.
template <class Kind>
const Kind& MemberOf(const Json::Object& object, const wchar_t* name)
{
    const Json::Value* const member = object.Find(name);
    if (const Kind* const found = member ? std::get_if<Kind>(member) : nullptr)
        return *found;
    throw std::runtime_error("\"" + TvlPlatform::ToUtf8(name) + "\" is missing");
}

const TvlString& TextOf(const Json::Value& value)
{
    if (const auto* const text = std::get_if<TvlString>(&value))
        return *text;
    throw std::runtime_error("a text is expected");
}

/// Adds the numbers of libraries: {"library": {"101": key}}.
void ReadLegacy(const Json::Object& legacy, Texts& texts)
{
    for (const auto& [library, keys] : legacy.Members())
        if (const auto* const numbers = std::get_if<Json::Object>(&keys))
            for (const auto& [id, key] : numbers->Members())
                texts.emplace(LegacyName(library, static_cast<ULONG>(std::stoul(id.Std()))), TextOf(key));
}

void ReadTexts(const Json::Object& file, Texts& texts)
{
    if (MemberOf<double>(file, L"version") != kFormatVersion)
        throw std::runtime_error("unknown version");
    for (const auto& [key, text] : MemberOf<Json::Object>(file, L"texts").Members())
        texts.emplace(key, TextOf(text));
    if (file.Find(L"legacy"))
        ReadLegacy(MemberOf<Json::Object>(file, L"legacy"), texts);
}

/// Adds the texts of one file; those that are there already stay.
void ReadFile(const fs::path& path, Texts& texts)
{
    try {
        std::string bytes(static_cast<std::size_t>(fs::file_size(path)), '\0');
        if (!std::ifstream(path, std::ios::binary).read(bytes.data(), std::ssize(bytes)))
            throw std::runtime_error("not all of it could be read");
        const auto file = Json::Parse(bytes, kLimits);
        if (!file)
            throw std::runtime_error("no JSON object");
        ReadTexts(*file, texts);
    } catch (const std::bad_alloc&) {
        throw;   // a part of the texts must not pass for all of them
    } catch (const std::exception& failure) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error,
            TvlString().Format(L"texts of \"%s\" can't be read: %S", FromFilePath(path), failure.what()));
    }
}

void ReadFolder(const std::wstring& folder, Texts& texts)
{
    const fs::path path =
        Within(ToFilePath(TvlConfig::GetSuiteDir()), "Languages") / ToFilePath(folder) / "Data" / "Texts";
    std::vector<TvlUtils::SystemIO::FolderEntry> entries;
    const auto listed = TvlUtils::SystemIO::ListSystemFolder(path, entries);
    for (const auto& entry : entries)
        if (entry.name.extension() == ".json")
            ReadFile(Within(path, entry.name), texts);
    if (!listed)
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

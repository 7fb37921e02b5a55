#include "IniUpdateRegistry.h"

#include "InterruptionMark.h"
#include "WUTLRegistry.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlConfig/ProductKey.h"
#include "siblings/TvlPref/IRegistry.h"
#include "siblings/TvlPref/IniIoPolicy.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <new>

namespace {
using TvlUtils::IniParser;
using TvlUtils::LogLevel;

const TvlString& TargetKey()
{
    static const TvlString key = TvlString().Format(L"HKEY_CURRENT_USER\\%s\\%s\\Application Preferences",
        INIGetRegistryProductKey(), ApplicationInfo::Settings().GetRegistryName());
    return key;
}

bool IsVerbose() { return TvlUtils::GetVlogLevel() >= 1; }

bool Exists(const TvlString& key) { return WUTLRegistry::IsValid(key.c_str()) == PREFUTILS::kRegistryOk; }

void LogFailure(const TvlString& text)
{
    if (TvlUtils::ShouldCreateLogMessage(LogLevel::Error))
        TvlUtils::LogMessage(LogLevel::Error, text);
}

void DeleteTree()
{
    const wchar_t* const key = TargetKey().c_str();
    if (Exists(TargetKey()) && WUTLRegistry::DeleteRegistryKey(key) == PREFUTILS::kRegistryOk)
        WUTLRegistry::CreateKey(key, WUTLRegistry::kReadWriteAccess, 0);
}

void WriteEntry(WUTLRegistry& key, const TvlString& keyName, const IniParser::Entry& entry)
{
    const TvlString name = TvlPref::IniIoPolicy::Decode(entry.first);
    const TvlString value = TvlPref::IniIoPolicy::Decode(entry.second);
    if (IsVerbose())
        TvlUtils::LogMessage(LogLevel::Info, TvlString().Format(L"Setting '%s' of '%s'", name, keyName));
    if (key.SetValue(name.c_str(), value.c_str()) != PREFUTILS::kRegistryOk)
        LogFailure(L"Failed to set value '" + name + L"' for key '" + keyName + L"'");
}

/// Whether there is such a key in the end.
bool MakeKey(const TvlString& key)
{
    return Exists(key)
        || WUTLRegistry::CreateKey(key.c_str(), WUTLRegistry::kReadWriteAccess, 0) == PREFUTILS::kRegistryOk
        || Exists(key);
}

void WriteSection(const IniParser::Section& section)
{
    TvlString subKey = section.first;
    subKey.Replace(L"/", L"\\");
    subKey = TargetKey() + L"\\" + subKey;
    if (!MakeKey(subKey))
        return LogFailure(
            L"Failed to create registry key  '" + subKey + L"'");   // two blanks: logs are searched for it
    WUTLRegistry key(subKey.c_str(), WUTLRegistry::kReadWriteAccess, 1);
    TvlString location;
    key.GetCurrentKeyLocation(location);
    if (location.IsEmpty())
        return;   // it can't be opened for writing
    for (const IniParser::Entry& entry : section.second)
        WriteEntry(key, subKey, entry);
}
}   // namespace

extern "C" void IniUpdateRegistry(const wchar_t* path)
try {
    if (!path)
        return;
    if (IsVerbose())
        TvlUtils::LogMessage(LogLevel::Info, TvlString(L"Reading workspace settings file: ") + path);
    const std::vector<IniParser::Section> sections = IniParser(path).GetAllData();
    const InterruptionMark mark(path, InterruptionMark::kApplying);
    PREFUTILS::RegistryBatch batch;
    DeleteTree();
    for (const IniParser::Section& section : sections)
        WriteSection(section);
    if (batch.Commit() == PREFUTILS::kRegistryOk)
        mark.Done();
    else
        LogFailure(TvlString(L"The preferences stay as they were, for the registry fails: ") + path);
} catch (const std::bad_alloc&) {
    TvlUtils::LogMessage(LogLevel::Error, L"Out of memory for the settings of the workspace");
}

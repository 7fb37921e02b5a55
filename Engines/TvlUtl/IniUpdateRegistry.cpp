#include "IniUpdateRegistry.h"

#include "AppliedSettings.h"
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

/// A status, unless it says that there is no memory: that ends the whole, which is repeated then, where an entry that the
/// registry does not take is passed over.
LONG Checked(LONG status)
{
    constexpr LONG kNotEnoughMemory = 8, kOutOfMemory = 14;   // ERROR_NOT_ENOUGH_MEMORY, ERROR_OUTOFMEMORY
    if (status == kNotEnoughMemory || status == kOutOfMemory)
        throw std::bad_alloc();
    return status;
}

bool Exists(const TvlString& key) { return Checked(WUTLRegistry::IsValid(key.c_str())) == PREFUTILS::kRegistryOk; }

bool Create(const TvlString& key)
{
    const LONG status = WUTLRegistry::CreateKey(key.c_str(), WUTLRegistry::kReadWriteAccess, 0);
    return Checked(status) == PREFUTILS::kRegistryOk;
}

void LogFailure(const TvlString& text)
{
    if (TvlUtils::ShouldCreateLogMessage(LogLevel::Error))
        TvlUtils::LogMessage(LogLevel::Error, text);
}

void DeleteTree()
{
    if (Exists(TargetKey()) && Checked(WUTLRegistry::DeleteRegistryKey(TargetKey().c_str())) == PREFUTILS::kRegistryOk)
        Create(TargetKey());
}

void WriteEntry(WUTLRegistry& key, const TvlString& keyName, const IniParser::Entry& entry)
{
    const TvlString name = TvlPref::IniIoPolicy::Decode(entry.first);
    const TvlString value = TvlPref::IniIoPolicy::Decode(entry.second);
    if (IsVerbose())
        TvlUtils::LogMessage(LogLevel::Info, TvlString().Format(L"Setting '%s' of '%s'", name, keyName));
    if (Checked(key.SetValue(name.c_str(), value.c_str())) != PREFUTILS::kRegistryOk)
        LogFailure(L"Failed to set value '" + name + L"' for key '" + keyName + L"'");
}

/// Whether there is such a key in the end.
bool MakeKey(const TvlString& key) { return Exists(key) || Create(key) || Exists(key); }

void WriteSection(const IniParser::Section& section)
{
    TvlString subKey = section.first;
    subKey.Replace(L"/", L"\\");
    subKey = TargetKey() + L"\\" + subKey;
    if (!MakeKey(subKey))
        return LogFailure(
            L"Failed to create registry key  '" + subKey + L"'");   // two blanks: logs are searched for it
    WUTLRegistry key;
    if (Checked(key.OpenKey(subKey.c_str(), 1)) != PREFUTILS::kRegistryOk)
        return;   // it can't be opened for writing
    for (const IniParser::Entry& entry : section.second)
        WriteEntry(key, subKey, entry);
}

/// Replaces the preferences in one step, where the registry has that.
bool ReplaceTree(const IniParser& settings)
{
    PREFUTILS::RegistryBatch batch;
    DeleteTree();
    settings.ForEachSection(WriteSection);
    return batch.Commit() == PREFUTILS::kRegistryOk;
}

bool Apply(const TvlString& path)
{
    const IniParser settings(path);
    const InterruptionMark mark(path, InterruptionMark::kApplying);
    if (settings.HasFailed() && !mark.IsThere()) {
        // Nobody would learn that they are to be made good.
        LogFailure(L"The preferences stay as they were, for nothing can be read or written there: " + path);
        return false;
    }
    const bool isReplaced = ReplaceTree(settings);
    if (!isReplaced)
        LogFailure(L"The preferences stay as they were, for the registry fails: " + path);
    if (!isReplaced || settings.HasFailed())
        return false;
    mark.Done();
    return true;
}
}   // namespace

bool ApplySettings(const TvlString& path)
try {
    if (IsVerbose())
        TvlUtils::LogMessage(LogLevel::Info, L"Reading workspace settings file: " + path);
    return Apply(path);
} catch (const std::bad_alloc&) {
    TvlUtils::LogMessage(LogLevel::Error, L"Out of memory for the settings of the workspace");
    return false;
}

extern "C" void IniUpdateRegistry(const wchar_t* path)
try {
    if (path)
        ApplySettings(path);
} catch (const std::bad_alloc&) {
    TvlUtils::LogMessage(LogLevel::Error, L"Out of memory for the path of the settings");
}

#include "SettingsOrigin.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/InterProcess.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <map>
#include <mutex>

namespace {
namespace File = TvlUtils::SystemIO::File;
using SettingsOrigin::Lack;
using TvlUtils::InterProcessEvent;

constexpr std::size_t kLimit = 64 * 1024;   // bytes; a path has far fewer

/// An event that others find as long as this process lives.
struct Session {
    TvlString name = L"WSMANAGER_SESSION_" + TvlUtils::Guid::Generate().ToString();
    std::unique_ptr<InterProcessEvent> event = InterProcessEvent::createEvent(name, 0, 0);
};

Session& OwnSession()
{
    static Session session;
    return session;
}

struct NotedLack {
    TvlString workspace;
    Lack lack = Lack::None;
};

/// By the file of the settings.
struct Lacks {
    std::mutex lock;
    std::map<std::wstring, NotedLack> bySettings;
};

Lacks& AllLacks()
{
    static Lacks lacks;
    return lacks;
}

/// The name of the session in the first line, the workspace in the rest.
struct Note {
    TvlString session;
    TvlString workspace;
};

TvlString NotePath(const TvlString& settings) { return settings + L".origin"; }

std::optional<Note> Read(const TvlString& settings)
{
    std::string bytes;
    if (!File::ReadAll(NotePath(settings), bytes, kLimit))
        return std::nullopt;
    const std::size_t end = bytes.find('\n');
    if (end == std::string::npos)
        return std::nullopt;
    return Note{TvlPlatform::FromUtf8(bytes.substr(0, end)), TvlPlatform::FromUtf8(bytes.substr(end + 1))};
}

bool IsAlive(const TvlString& session)
{
    return session == OwnSession().name || InterProcessEvent::openEvent(session) != nullptr;
}
}   // namespace

void SettingsOrigin::Record(const TvlString& settings, const TvlString& workspace)
{
    const std::string bytes = TvlPlatform::ToUtf8(OwnSession().name) + '\n' + TvlPlatform::ToUtf8(workspace);
    // Where it fails a crash is not recovered from; a note of other settings would have these replaced.
    if (!File::WriteAside(NotePath(settings), bytes))
        File::Delete(NotePath(settings));
}

bool SettingsOrigin::IsForeign(const TvlString& settings, const TvlString& workspace)
{
    const auto note = Read(settings);
    return note && note->workspace.CompareNoCase(workspace) != 0 && !IsAlive(note->session);
}

void SettingsOrigin::SetLack(const TvlString& settings, const TvlString& workspace, Lack lack)
{
    const std::lock_guard hold(AllLacks().lock);
    NotedLack& noted = AllLacks().bySettings[settings.Std()];
    const bool isSecured = lack == Lack::None && noted.workspace.CompareNoCase(workspace) == 0;
    if (noted.lack != Lack::Unsaved || isSecured)
        noted = NotedLack{workspace, lack};
}

Lack SettingsOrigin::LackOf(const TvlString& settings, const TvlString& workspace)
{
    const std::lock_guard hold(AllLacks().lock);
    const auto found = AllLacks().bySettings.find(settings.Std());
    if (found == AllLacks().bySettings.end())
        return Lack::None;
    const auto& [noted, lack] = found->second;
    if (lack == Lack::Unapplied || noted.CompareNoCase(workspace) == 0)
        return lack;
    return lack == Lack::Unsaved ? Lack::Unwritten : Lack::None;
}

bool SettingsOrigin::AreForeign(Lack lack) { return lack == Lack::Unwritten || lack == Lack::Unapplied; }

std::optional<TvlString> SettingsOrigin::UnsavedOwner(const TvlString& settings)
{
    const std::lock_guard hold(AllLacks().lock);
    const auto found = AllLacks().bySettings.find(settings.Std());
    const bool isUnsaved = found != AllLacks().bySettings.end() && found->second.lack == Lack::Unsaved;
    return isUnsaved ? std::optional(found->second.workspace) : std::nullopt;
}

void SettingsOrigin::BeginSession()
{
    OwnSession() = Session();
    const std::lock_guard hold(AllLacks().lock);
    AllLacks().bySettings.clear();
}

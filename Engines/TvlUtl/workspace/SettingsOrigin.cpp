#include "SettingsOrigin.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/InterProcess.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <map>
#include <mutex>
#include <sstream>

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

/// The session, the workspace and the application, a line each.
struct Note {
    TvlString session;
    SettingsOrigin::Left left;
};

TvlString NotePath(const TvlString& settings) { return settings + L".origin"; }

std::optional<Note> Read(const TvlString& settings)
{
    std::string bytes;
    if (!File::ReadAll(NotePath(settings), bytes, kLimit))
        return std::nullopt;
    std::istringstream lines(bytes);
    std::string session;
    std::string workspace;
    std::string application;
    if (!std::getline(lines, session) || !std::getline(lines, workspace))
        return std::nullopt;
    std::getline(lines, application);
    using TvlPlatform::FromUtf8;
    return Note{FromUtf8(session), {FromUtf8(workspace), FromUtf8(application)}};
}

bool IsUnsaved(Lack lack) { return lack == Lack::Unsaved || lack == Lack::UnsavedAlone; }

bool IsAlive(const TvlString& session)
{
    return session == OwnSession().name || InterProcessEvent::openEvent(session) != nullptr;
}
}   // namespace

void SettingsOrigin::Record(const TvlString& settings, const TvlString& workspace, const TvlString& application)
{
    const std::string bytes = TvlPlatform::ToUtf8(OwnSession().name + L"\n" + workspace + L"\n" + application);
    // Where it fails a crash is not recovered from; a note of other settings would have these replaced.
    if (!File::WriteAside(NotePath(settings), bytes))
        File::Delete(NotePath(settings));
}

std::optional<SettingsOrigin::Left> SettingsOrigin::LeftBehind(const TvlString& settings)
{
    const auto note = Read(settings);
    return note && !IsAlive(note->session) ? std::optional(note->left) : std::nullopt;
}

bool SettingsOrigin::IsForeign(const TvlString& settings, const TvlString& workspace)
{
    const auto left = LeftBehind(settings);
    return left && left->workspace.CompareNoCase(workspace) != 0;
}

void SettingsOrigin::SetLack(const TvlString& settings, const TvlString& workspace, Lack lack)
{
    const std::lock_guard hold(AllLacks().lock);
    NotedLack& noted = AllLacks().bySettings[settings.Std()];
    const bool isSecured = lack == Lack::None && noted.workspace.CompareNoCase(workspace) == 0;
    if (!IsUnsaved(noted.lack) || isSecured)
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
    return IsUnsaved(lack) ? Lack::Unwritten : Lack::None;
}

bool SettingsOrigin::AreForeign(Lack lack) { return lack == Lack::Unwritten || lack == Lack::Unapplied; }

std::optional<TvlString> SettingsOrigin::UnsavedOwner(const TvlString& settings)
{
    const std::lock_guard hold(AllLacks().lock);
    const auto found = AllLacks().bySettings.find(settings.Std());
    const bool isNoted = found != AllLacks().bySettings.end() && IsUnsaved(found->second.lack);
    return isNoted ? std::optional(found->second.workspace) : std::nullopt;
}

void SettingsOrigin::BeginSession()
{
    OwnSession() = Session();
    const std::lock_guard hold(AllLacks().lock);
    AllLacks().bySettings.clear();
}

#include "SettingsOrigin.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/InterProcess.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <map>
#include <mutex>
#include <optional>

namespace {
namespace File = TvlUtils::SystemIO::File;
using TvlUtils::InterProcessEvent;

constexpr std::size_t kLimit = 64 * 1024;   // bytes; a path has far fewer

/// An event that others find as long as this process lives.
struct Session {
    TvlString name = L"WSMANAGER_SESSION_" + TvlUtils::Guid::Generate().ToString();
    std::unique_ptr<InterProcessEvent> event = InterProcessEvent::createEvent(name, 0, 0);
};

const Session& OwnSession()
{
    static const Session session;
    return session;
}

/// Workspaces whose settings could not be written, by the file of the settings.
struct UnreadWorkspaces {
    std::mutex lock;
    std::map<std::wstring, TvlString> bySettings;
};

UnreadWorkspaces& Unread()
{
    static UnreadWorkspaces unread;
    return unread;
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
    static_cast<void>(File::WriteAside(NotePath(settings), bytes));   // where it fails a crash is not recovered from
}

void SettingsOrigin::Close(const TvlString& settings)
{
    if (const auto note = Read(settings); note && note->session == OwnSession().name)
        File::Delete(NotePath(settings));
}

bool SettingsOrigin::IsForeign(const TvlString& settings, const TvlString& workspace)
{
    const auto note = Read(settings);
    return note && note->workspace.CompareNoCase(workspace) != 0 && !IsAlive(note->session);
}

void SettingsOrigin::SetUnread(const TvlString& settings, const TvlString& workspace)
{
    const std::lock_guard hold(Unread().lock);
    Unread().bySettings.insert_or_assign(settings.Std(), workspace);
}

bool SettingsOrigin::IsUnread(const TvlString& settings, const TvlString& workspace)
{
    const std::lock_guard hold(Unread().lock);
    const auto found = Unread().bySettings.find(settings.Std());
    return found != Unread().bySettings.end() && !workspace.IsEmpty() && found->second.CompareNoCase(workspace) == 0;
}

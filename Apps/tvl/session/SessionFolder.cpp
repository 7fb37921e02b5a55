#include "SessionFolder.h"

#include "Commands.h"
#include "RegistryBelow.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"

namespace SystemIO = TvlUtils::SystemIO;

namespace {
/// The process's variables, with those that name the places of the user's files set to the session's own.
class SessionEnvironment final : public Ports::Environment {
public:
    SessionEnvironment(std::wstring userFolder, std::wstring registryFile)
        : m_userFolder(std::move(userFolder)), m_registryFile(std::move(registryFile)),
          m_system(Ports::Environment::Get())
    {
    }

    std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        if (name == L"TVL_USER_DIR")
            return m_userFolder;
        if (name == L"TVL_REGISTRY")
            return m_registryFile;
        return m_system.Variable(name);
    }
    bool IsSandboxed() const override { return m_system.IsSandboxed(); }

private:
    const std::wstring m_userFolder;
    const std::wstring m_registryFile;
    const Ports::Environment& m_system;
};

/// The full path that was asked for, without a separator at its end, or a new folder's.
TvlString FullPath(const std::string& name)
{
    if (name.empty())
        return SystemIO::Path::CreateNewTempFolder();
    std::error_code unknown;
    const auto path =
        std::filesystem::absolute(SystemIO::ToFilePath(TvlPlatform::FromUtf8(name)), unknown).lexically_normal();
    return SystemIO::FromFilePath(path.has_filename() ? path : path.parent_path());
}

/// The folder that was asked for. The command ends when it can't be had.
TvlString MakeFolder(const std::string& name)
{
    const TvlString path = FullPath(name);
    if (path.IsEmpty())
        EndWithBadInput("no folder could be made among the temporary files; --folder can name one");
    if (const auto made = SystemIO::Folder::EnsureExists(path); !made)
        EndWithBadInput("the folder " + Quoted(path) + " can't be made: " + Shown(made.Reason()));
    if (!SystemIO::Folder::IsWritable(path))
        EndWithBadInput("the folder " + Quoted(path) + " can't be written to");
    return path;
}

/// Name of a folder's key: keys must not contain backslashes, and have at most 255 characters.
TvlString KeyOf(const TvlString& folder)
{
    constexpr int kMostKept = 200;
    TvlString name = folder.Right(kMostKept);
    name.Replace(L"\\", L"/");
    return L"Software\\Tovel\\Sessions\\" + name;
}

/// Whether the registry is a file, which it makes when it is first used.
bool IsInFile(PREFUTILS::IRegistry& registry, const TvlString& file)
{
    HKEY key = nullptr;
    if (registry.RegOpenKeyExW(PREFUTILS::RegistryRoot(0x80000001), L"Software", 0, PREFUTILS::kRegistryRead, &key)
        == PREFUTILS::kRegistryOk)
        registry.RegCloseKey(key);
    return SystemIO::File::Exists(file);
}
}   // namespace

SessionFolder::SessionFolder(TvlString path) : m_path(std::move(path)), m_registry(File(L"registry.db"))
{
    static SessionEnvironment& environment = *new SessionEnvironment(m_path.Std(), m_registry.Std());
    Ports::Environment::SetForTests(&environment);

    PREFUTILS::IRegistry& system = PREFUTILS::IRegistry::GetInstance();
    if (IsInFile(system, m_registry))
        return;
    const TvlString key = KeyOf(m_path);
    static RegistryBelow& registry = *new RegistryBelow(system, key);
    if (!registry.IsOpen())
        EndWithBadInput("the registry key \"HKEY_CURRENT_USER\\" + Shown(key) + "\" can't be made");
    PREFUTILS::IRegistry::SetForTests(&registry);
    m_registry = L"HKEY_CURRENT_USER\\" + key;
}

const SessionFolder& SessionFolder::Enter(const std::string& folder)
{
    static const SessionFolder place(MakeFolder(folder));
    return place;
}

TvlString SessionFolder::File(const wchar_t* name) const { return SystemIO::Path::Combine(m_path, name); }

#include "TvlTestKit/UserWorld.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace fs = std::filesystem;

namespace TvlTestKit {

UserWorld::UserWorld() { environment.variables[L"TVL_USER_DIR"] = Path("user").Std(); }

TvlString UserWorld::Path(const std::string& name) const
{
    return TvlUtils::SystemIO::FromFilePath(m_folder.Path() / fs::path(name).make_preferred());
}

TvlString UserWorld::Folder(const std::string& name) const
{
    return TvlUtils::SystemIO::Path::AddBackslash(Path(name));
}

TvlString UserWorld::MakeFolder(const std::string& name) const
{
    fs::create_directories(m_folder.Path() / name);
    return Folder(name);
}

TvlString UserWorld::MakeFile(const std::string& name, const std::string& bytes) const
{
    WriteFileBytes(m_folder.Path() / name, bytes);
    return Path(name);
}

std::string UserWorld::Bytes(const std::string& name) const { return FileBytes(m_folder.Path() / name); }
bool UserWorld::Has(const std::string& name) const { return fs::exists(m_folder.Path() / name); }
void UserWorld::Remove(const std::string& name) const { fs::remove_all(m_folder.Path() / name); }

}   // namespace TvlTestKit

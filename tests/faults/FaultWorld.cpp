#include "FaultWorld.h"

#include "FakeEnvironment.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"

using TvlUtils::SystemIO::FromFilePath;

namespace {
std::filesystem::path Root(const std::string& first)
{
    return first == "suite" ? std::filesystem::path(SUITE_FOLDER) : std::filesystem::path(kFaultFolder) / first;
}
}   // namespace

FaultWorld::FaultWorld()
{
    files.AddFolder(File("user"));
    files.AddFolder(File("suite"));
}

std::filesystem::path FaultWorld::File(const std::string& name)
{
    const std::filesystem::path path(name);
    std::filesystem::path file = Root(path.begin()->string());
    for (auto part = std::next(path.begin()); part != path.end(); ++part)
        file /= *part;
    return file.make_preferred();
}

TvlString FaultWorld::Path(const std::string& name) { return FromFilePath(File(name)); }

void EnterFaultWorld()
{
    static const FakeEnvironment environment{
        {{L"TVL_USER_DIR", FaultWorld::Path("user").Std()}, {L"TVL_SUITE_DIR", FaultWorld::Path("suite").Std()}}};
    TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {});
    Framework::Resources::SetLanguageFolder(L"EN");
}

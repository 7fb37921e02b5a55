#include "StepLog.h"

#include "WorkspaceSettings.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

namespace Path = TvlUtils::SystemIO::Path;

void Require(bool holds, const std::string& problem)
{
    if (!holds)
        throw StepFailure(problem);
}

std::string Count(std::size_t count, const std::string& one)
{
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

std::string StepLog::Name(const TvlString& path) const
{
    if (!Path::Contains(m_folder, path))
        return Shown(path);
    std::string name = Shown(Path::GetRelativePath(m_folder, path, false));
    std::replace(name.begin(), name.end(), '\\', '/');
    return name.empty() ? "." : name;
}

void StepLog::Left(const TvlString& path)
{
    const std::string name = Name(path);
    Require(Path::Exists(path), name + " is missing");
    m_files.push_back(name);
}

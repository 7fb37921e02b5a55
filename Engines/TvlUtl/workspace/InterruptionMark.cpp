#include "InterruptionMark.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

using namespace TvlUtils::SystemIO;

InterruptionMark::InterruptionMark(const TvlString& settings, const wchar_t* work)
    : m_path(settings + work), m_isThere(File::EnsureExists(m_path))
{
}

void InterruptionMark::Done() const { File::Delete(m_path); }

std::optional<bool> InterruptionMark::WasLeft(const TvlString& settings, const wchar_t* work)
{
    FileStatus status;
    const FileResult found = FileLayer::Get().Stat(ToFilePath(settings + work), status);
    return found || found.IsMissing() ? std::optional(static_cast<bool>(found)) : std::nullopt;
}

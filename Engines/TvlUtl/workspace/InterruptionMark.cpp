#include "InterruptionMark.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

using namespace TvlUtils::SystemIO;

InterruptionMark::InterruptionMark(const TvlString& settings, const wchar_t* work)
    : m_path(settings + work), m_isThere(File::EnsureExists(m_path))
{
}

void InterruptionMark::Done() const { File::Delete(m_path); }

bool InterruptionMark::WasLeft(const TvlString& settings, const wchar_t* work)
{
    // What can't be looked at may be there: work that is repeated costs less than work that stays half done.
    FileStatus status;
    return !FileLayer::Get().Stat(ToFilePath(settings + work), status).IsMissing();
}

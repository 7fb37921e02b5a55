#include "InterruptionMark.h"

#include "WorkspaceAccess.h"
#include "siblings/TvlUtils/SystemIO.h"

using namespace TvlUtils::SystemIO;

InterruptionMark::InterruptionMark(const TvlString& settings, const wchar_t* work)
    : m_path(settings + work), m_isThere(File::EnsureExists(m_path))
{
}

void InterruptionMark::Done() const { File::Delete(m_path); }

std::optional<bool> InterruptionMark::WasLeft(const TvlString& settings, const wchar_t* work)
{
    return ::IsThere(settings + work);
}

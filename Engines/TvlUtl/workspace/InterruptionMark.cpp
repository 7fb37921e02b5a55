#include "InterruptionMark.h"

#include "WorkspaceAccess.h"
#include "siblings/TvlUtils/SystemIO.h"

using namespace TvlUtils::SystemIO;

namespace {
/// A name outlasts a power cut when it was given by a renaming, and work that begins behind it is never seen without its
/// mark. What a process left that ended in between becomes the next one's.
bool Make(const TvlString& path)
{
    const TvlString unnamed = path + L".new";
    if (File::EnsureExists(unnamed) && File::Move(unnamed, path))
        return true;
    File::Delete(unnamed);
    return File::Exists(path);
}
}   // namespace

InterruptionMark::InterruptionMark(const TvlString& settings, const wchar_t* work)
    : m_path(settings + work), m_isThere(Make(m_path))
{
}

void InterruptionMark::Done() const { File::Delete(m_path); }

std::optional<bool> InterruptionMark::WasLeft(const TvlString& settings, const wchar_t* work)
{
    return ::IsThere(settings + work);
}

#include "InterruptionMark.h"

#include "siblings/TvlUtils/SystemIO.h"

namespace File = TvlUtils::SystemIO::File;

InterruptionMark::InterruptionMark(const TvlString& settings, const wchar_t* work) : m_path(settings + work)
{
    static_cast<void>(File::EnsureExists(m_path));
}

void InterruptionMark::Done() const { File::Delete(m_path); }

bool InterruptionMark::WasLeft(const TvlString& settings, const wchar_t* work) { return File::Exists(settings + work); }

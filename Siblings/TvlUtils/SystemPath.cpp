// Paths as texts: no file is touched.
#include "siblings/TvlUtils/SystemIO.h"

#include "Windows/PathForm.h"

namespace TvlUtils::SystemIO::Path {

namespace {
bool IsSeparator(wchar_t c) { return kPathSeparators.find(c) != std::wstring_view::npos; }
}   // namespace

bool IsFullyQualified(const TvlString& path)
{
    return !path.IsEmpty() && (IsSeparator(path.GetAt(0)) || DriveLength(path) > 0);
}

TvlString Combine(const TvlString& first, const TvlString& second)
{
    if (first.IsEmpty() || IsFullyQualified(second))
        return second;
    if (second.IsEmpty() || IsSeparator(first.GetAt(first.GetLength() - 1)))
        return first + second;
    return first + kPathSeparators.front() + second;
}

TvlString Combine(const TvlString& first, const TvlString& second, const TvlString& extension)
{
    const TvlString path = Combine(first, second);
    if (extension.IsEmpty() || extension.GetAt(0) == L'.')
        return path + extension;
    return path + L'.' + extension;
}

}   // namespace TvlUtils::SystemIO::Path

// Paths as texts: no file is touched.
#include "siblings/TvlUtils/SystemIO.h"

#include "Windows/PathForm.h"

#include <algorithm>

namespace TvlUtils::SystemIO::Path {

namespace {
// Compared here and not searched for: the searches of string_view call the C library for each character.
bool IsSeparator(wchar_t c)
{
    return std::any_of(
        kPathSeparators.begin(), kPathSeparators.end(), [c](wchar_t separator) { return c == separator; });
}

/// Length of what stands before the file's name: all up to the last separator, or a drive.
int FolderLength(std::wstring_view path)
{
    const auto end = std::find_if(path.rbegin(), path.rend(), IsSeparator).base();
    return static_cast<int>(end == path.begin() ? DriveLength(path) : static_cast<std::size_t>(end - path.begin()));
}

/// Where the extension of a file's name begins, or its end.
int ExtensionStart(const TvlString& name)
{
    const int point = name.ReverseFind(L'.');
    return point < 0 ? name.GetLength() : point;
}

constexpr CompareCase kNameCase = kNamesHaveCase ? CompareCase::Sensitive : CompareCase::Insensitive;

bool SameName(const TvlString& a, const TvlString& b) { return a.Compare(b, kNameCase) == 0; }

/// The elements of a path with "." and ".." worked out as far as that goes without a look at the disk. What leads out of
/// a root stays in it.
std::vector<TvlString> NormalElements(const TvlString& path)
{
    const bool isRooted = IsFullyQualified(path);
    const std::size_t kept = DriveLength(path) > 0 ? 1 : 0;
    std::vector<TvlString> elements;
    for (const TvlString& element : Split(path)) {
        const bool climbs = element == L"..";
        if (climbs && elements.size() > kept && elements.back() != L"..")
            elements.pop_back();
        else if (element != L"." && !(climbs && isRooted))
            elements.push_back(element);
    }
    return elements;
}

/// How many elements two paths begin with together.
std::size_t SharedElements(const std::vector<TvlString>& a, const std::vector<TvlString>& b)
{
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end(), SameName).first - a.begin());
}

TvlString Joined(const std::vector<TvlString>& elements)
{
    TvlString path;
    for (const TvlString& element : elements)
        path = path.IsEmpty() ? element : path + kPathSeparators.front() + element;
    return path;
}
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

TvlString AddBackslash(const TvlString& path)
{
    if (path.IsEmpty() || IsSeparator(path.GetAt(path.GetLength() - 1)))
        return path;
    return path + kPathSeparators.front();
}

TvlString GetFolderName(const TvlString& path) { return path.Left(FolderLength(path)); }

TvlString ReplaceFileName(const TvlString& path, const TvlString& name) { return GetFolderName(path) + name; }

TvlString GetFileName(const TvlString& path) { return path.Mid(FolderLength(path)); }

TvlString GetFileNameWithoutExtension(const TvlString& path)
{
    const TvlString name = GetFileName(path);
    return name.Left(ExtensionStart(name));
}

TvlString GetExtension(const TvlString& path)
{
    const std::wstring_view text = path;
    const std::wstring_view name = text.substr(static_cast<std::size_t>(FolderLength(text)));
    const std::size_t point = name.rfind(L'.');
    return point == name.npos ? TvlString() : TvlString(std::wstring(name.substr(point)));
}

bool HasExtension(const TvlString& path, const TvlString& extension)
{
    return GetExtension(path).CompareNoCase(extension) == 0;
}

std::vector<TvlString> Split(const TvlString& path)
{
    std::vector<TvlString> elements;
    const std::wstring_view text = path;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of(kPathSeparators, at), text.size());
        if (end > at)
            elements.emplace_back(text.data() + at, end - at);
        at = end + 1;
    }
    return elements;
}

bool Contains(const TvlString& folder, const TvlString& path)
{
    if (folder.IsEmpty() || path.IsEmpty() || IsFullyQualified(folder) != IsFullyQualified(path))
        return false;
    const auto outer = NormalElements(folder);
    return SharedElements(outer, NormalElements(path)) == outer.size();
}

TvlString GetRelativePath(const TvlString& base, const TvlString& path, bool dotted)
{
    if (IsFullyQualified(base) != IsFullyQualified(path) || DriveLength(base) != DriveLength(path))
        return TvlString();
    const auto from = NormalElements(base);
    const auto to = NormalElements(path);
    const std::size_t shared = SharedElements(from, to);
    if (shared == 0 && DriveLength(base) > 0)
        return TvlString();
    std::vector<TvlString> way(from.size() - shared, L"..");
    if (way.empty() && dotted)
        way.emplace_back(L".");
    way.insert(way.end(), to.begin() + static_cast<std::ptrdiff_t>(shared), to.end());
    return Joined(way);
}

}   // namespace TvlUtils::SystemIO::Path

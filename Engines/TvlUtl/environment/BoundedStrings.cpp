#include "BoundedStrings.h"

#include "siblings/TvlPlatform/Format.h"

#include <algorithm>
#include <string>

namespace TvlUtl {

namespace {
constexpr std::size_t kGreatestSize = 2147483647;

/// Copies until the source ends, `limit` characters are copied or the buffer is full, and ends the text.
template <class C>
C* Copy(C* dest, std::size_t size, const C* source, std::size_t limit)
{
    const std::size_t room = std::min(size - 1, limit);
    std::size_t count = 0;
    for (; count < room && source[count]; ++count)
        dest[count] = source[count];
    dest[count] = C();
    return dest;
}

template <class C>
C* CopyChecked(C* dest, std::size_t size, const C* source, std::size_t limit, bool refused)
{
    if (size == 0)
        return dest;
    if (!refused)
        return Copy(dest, size, source, limit);
    *dest = C();
    return dest;
}

template <class C>
C* Append(C* dest, std::size_t size, const C* source)
{
    if (size == 0 || size > kGreatestSize)
        return dest;
    C* const end = std::find(dest, dest + size, C());
    if (end != dest + size)
        Copy(end, size - static_cast<std::size_t>(end - dest), source, size);
    return dest;
}

template <class C>
long long Print(C* dest, std::size_t size, const C* format, std::va_list arguments)
{
    if (size == 0 || size > kGreatestSize) {
        if (size != 0)
            *dest = C();
        return -1;
    }
    const std::basic_string<C> text = TvlPlatform::FormatVariadic(format, arguments);
    const std::size_t count = std::min(text.size(), size - 1);
    std::copy_n(text.data(), count, dest);
    dest[count] = C();
    return text.size() < size ? static_cast<long long>(std::char_traits<C>::length(dest)) : -1;
}
}   // namespace

char* StringCopy(char* dest, std::size_t size, const char* source)
{
    return CopyChecked(dest, size, source, size, size > kGreatestSize);
}

wchar_t* StringCopy(wchar_t* dest, std::size_t size, const wchar_t* source)
{
    return CopyChecked(dest, size, source, size, size > kGreatestSize);
}

char* StringCopyN(char* dest, std::size_t size, const char* source, std::size_t maxCount)
{
    return CopyChecked(dest, size, source, maxCount, size > kGreatestSize || maxCount >= kGreatestSize);
}

wchar_t* StringCopyN(wchar_t* dest, std::size_t size, const wchar_t* source, std::size_t maxCount)
{
    return CopyChecked(dest, size, source, maxCount, size > kGreatestSize || maxCount >= kGreatestSize);
}

char* StringAppend(char* dest, std::size_t size, const char* source) { return Append(dest, size, source); }
wchar_t* StringAppend(wchar_t* dest, std::size_t size, const wchar_t* source) { return Append(dest, size, source); }

long long StringVPrintf(char* dest, std::size_t size, const char* format, std::va_list arguments)
{
    return Print(dest, size, format, arguments);
}

long long StringVPrintf(wchar_t* dest, std::size_t size, const wchar_t* format, std::va_list arguments)
{
    return Print(dest, size, format, arguments);
}

long long StringPrintf(char* dest, std::size_t size, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const long long length = Print(dest, size, format, arguments);
    va_end(arguments);
    return length;
}

long long StringPrintf(wchar_t* dest, std::size_t size, const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const long long length = Print(dest, size, format, arguments);
    va_end(arguments);
    return length;
}

}   // namespace TvlUtl

// Copying, appending and printing into buffers of fixed size. Every text that is written ends with a zero.
#pragma once

#include "TvlUtlApi.h"

#include <cstdarg>
#include <cstddef>

namespace TvlUtl {

/// @{
/// Copies a text, as much of it as fits, and returns `dest`. `size` counts characters of the buffer, the end mark
/// included, here and below. A size above 2147483647 is taken for a negative one: the copies then clear the buffer,
/// appending leaves it alone. What does not fit is cut without a word. A buffer of size 0 is never written.
TVLUTL_API char* StringCopy(char* dest, std::size_t size, const char* source);
TVLUTL_API wchar_t* StringCopy(wchar_t* dest, std::size_t size, const wchar_t* source);
/// @}

/// @{
/// Copies at most `maxCount` characters, and returns `dest`; 2147483647 or more counts as a size that is too large.
TVLUTL_API char* StringCopyN(char* dest, std::size_t size, const char* source, std::size_t maxCount);
TVLUTL_API wchar_t* StringCopyN(wchar_t* dest, std::size_t size, const wchar_t* source, std::size_t maxCount);
/// @}

/// @{
/// Appends a text, as much of it as fits, and returns `dest`. Does nothing when `dest` has no end mark within `size`
/// characters.
TVLUTL_API char* StringAppend(char* dest, std::size_t size, const char* source);
TVLUTL_API wchar_t* StringAppend(wchar_t* dest, std::size_t size, const wchar_t* source);
/// @}

/// @{
/// Prints by a form with Windows' meaning (see TvlStringT::Format), whose conversions the arguments must fit. Returns
/// the length, or -1 when the text did not fit; what did fit then stays in the buffer.
TVLUTL_API long long StringPrintf(char* dest, std::size_t size, const char* format, ...);
TVLUTL_API long long StringPrintf(wchar_t* dest, std::size_t size, const wchar_t* format, ...);
TVLUTL_API long long StringVPrintf(char* dest, std::size_t size, const char* format, std::va_list arguments);
TVLUTL_API long long StringVPrintf(wchar_t* dest, std::size_t size, const wchar_t* format, std::va_list arguments);
/// @}

}   // namespace TvlUtl

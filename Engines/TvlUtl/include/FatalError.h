// Last-resort error box of the low-level engines.
#pragma once

#include "TvlUtlApi.h"

extern "C" {

/// Shows an error box, waits until it is closed and returns: the caller then fails on its own.
/// @param code            number of the error
/// @param sourceFile      path of the source file; the caption shows what stands before its first "." in capitals, so a
///                        path that begins with "../" shows nothing there, and code and line identify the place
/// @param line            line in that file
/// @param applicationName name for the caption; null or empty stands for the application's display name
/// @param fatal           not 0 for the text of a fatal error
TVLUTL_API void UIMSG_FatalError(
    int code, const char* sourceFile, int line, const wchar_t* applicationName, int fatal) noexcept;
}

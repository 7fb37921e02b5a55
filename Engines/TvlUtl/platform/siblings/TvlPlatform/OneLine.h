// Texts of strangers in lines of ours.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace TvlPlatform {

/// The text in one line of plain text: characters that would move the cursor, end the line or speak to a terminal become
/// `mark`. A terminal would obey them, and a line's end would let a file write lines of its own.
TVLSIBLINGS_API std::wstring OneLine(std::wstring text, wchar_t mark);

}   // namespace TvlPlatform

// Names of the predefined papers.
#pragma once

#include "PaperTypes.h"

/// A predefined paper's name in the language of the user; that of custom papers for kPaperCustom, empty for what is no
/// predefined paper. Safe to call from any thread.
TvlString PaperName(PaperType type);

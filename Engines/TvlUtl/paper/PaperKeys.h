// Names of the predefined papers.
#pragma once

#include "PaperTypes.h"

/// Key of a paper's name in the suite's texts; empty for what is no predefined paper.
const wchar_t* PaperNameKey(PaperType type);

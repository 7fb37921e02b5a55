#include "siblings/TvlConfig/ProductKey.h"

TvlString INIGetRegistryProductKey() { return L"SOFTWARE\\Tovel\\Suite"; }

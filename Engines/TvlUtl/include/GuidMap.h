// Identifiers of the engines and of the applications, and the file "guidmap.dat" that pairs them.
#pragma once

#include "TvlUtlApi.h"

#include <string>
#include <vector>

/// The application's identifier of an engine's: 1 and `to` filled, or 0 and `to` left alone. The pairs are read once from
/// "guidmap.dat" in the suite's data folder; a file that is missing or not whole pairs nothing.
TVLUTL_API int UTLMapEng2AppGUID(const GUID* from, GUID* to);
/// The engine's identifier of an application's, the same way.
TVLUTL_API int UTLMapApp2EngGUID(const GUID* from, GUID* to);

namespace TvlUtl {

/// Two names of one thing.
struct GuidPair {
    GUID engine;        // as the engines know it
    GUID application;   // as the applications know it
};

/// Bytes of a "guidmap.dat" with these pairs, sorted as the searches need them.
/// At most 33,554,431 pairs (32-bit offsets of the second table); std::length_error above.
TVLUTL_API std::string MakeGuidMap(const std::vector<GuidPair>& pairs);

}   // namespace TvlUtl

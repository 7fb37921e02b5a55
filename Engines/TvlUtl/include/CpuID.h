// Whether the processor has what the applications need.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Singleton.h"

class CpuID;
// Made in the library alone, so that all modules ask one object.
extern template class TVLUTL_API TvlUtils::Singleton<CpuID, 0>;

/// Tells of SSSE3, AVX, AVX2 and POPCNT. What the processor has is found out when the object is made; the preferences
/// "SimulateHardware/HasSSSE3", ".../HasAVX", ".../HasAVX2" and ".../HasPOPCNT", true unless they are changed, make a
/// feature look absent at once. Any thread may call.
class TVLUTL_API CpuID : public TvlUtils::Singleton<CpuID, 0> {
public:
    /// Features that have a name in GetFeatureName.
    enum EFeature : int {
        eSSSE3 = 1,   ///< "SSSE3"
        eAVX = 2,     ///< "AVX"
        eAVX2 = 3,    ///< "AVX2"
    };

    /// Asks the processor. For objects of a test; others ask the one that GetInstance gives.
    CpuID();

    // Whether the processor has a feature, without regard to preferences; false on a machine that can't be asked.

    /// As it was when the library was loaded.
    bool CheckSSSE3Support() const;
    /// Asks the processor alone. Whether the operating system saves the wider registers is not asked; callers rely on it.
    bool CheckAVXSupport() const;
    /// As CheckAVXSupport, of the 256-bit integer instructions.
    bool CheckAVX2Support() const;
    /// As it was when the library was loaded.
    bool CheckPOPCNTSupport() const;

    /// @{
    /// Whether a feature was there when the object was made, and its preference, read by every call, does not hide it.
    bool HasSSSE3() const;
    bool HasAVX() const;
    bool HasAVX2() const;
    bool HasPOPCNT() const;
    /// @}
    /// Whether the one object has all four.
    bool HasSufficientHardwareSupport() const;

    /// The name of a feature; "None" for any other value.
    static TvlStringT<wchar_t> GetFeatureName(EFeature feature);
    /// What the one object lacks, for a message: "AVX2, POPCNT", or empty. AVX, AVX2, SSSE3, POPCNT is the order.
    static TvlStringT<wchar_t> GetMissingInstructionsStr();

    /// Does again what happens when the library is loaded: reads the identification of the processor that
    /// Ports::Processor gives now. No other thread may be using this class. Objects that live keep what they found.
    static void ReadProcessorForTests();

private:
    bool m_hasSSSE3;
    bool m_hasAVX;
    bool m_hasAVX2;
    bool m_hasPOPCNT;
};

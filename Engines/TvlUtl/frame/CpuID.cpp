#include "CpuID.h"

#include "ProcessorIdentification.h"
#include "siblings/TvlPref/CPrefObject.h"

template class TvlUtils::Singleton<CpuID, 0>;

namespace {
// Bits of ECX of leaf 1 and EBX of leaf 7, from the processors' manuals.
constexpr ULONG kSSSE3 = 1u << 9;
constexpr ULONG kPOPCNT = 1u << 23;
constexpr ULONG kOSXSAVE = 1u << 27;
constexpr ULONG kAVX = 1u << 28;
constexpr ULONG kAVX2 = 1u << 5;

using FeaturePref = CPrefObject<bool, CBoxPrefManager>;
FeaturePref prefSSSE3(L"SimulateHardware/HasSSSE3", true);
FeaturePref prefAVX(L"SimulateHardware/HasAVX", true);
FeaturePref prefAVX2(L"SimulateHardware/HasAVX2", true);
FeaturePref prefPOPCNT(L"SimulateHardware/HasPOPCNT", true);

ProcessorIdentification& Identification()
{
    static ProcessorIdentification identification(Ports::Processor::Get());
    return identification;
}
// Reads it when the library is loaded; static objects that come earlier may ask too.
[[maybe_unused]] const ProcessorIdentification& readAtStart = Identification();

Ports::ProcessorLeaf QueryAnew(ULONG leaf)
{
    return Ports::Processor::Get().Identify(leaf, 0).value_or(Ports::ProcessorLeaf());
}
}   // namespace

CpuID::CpuID()
    : m_hasSSSE3(CheckSSSE3Support()), m_hasAVX(CheckAVXSupport()), m_hasAVX2(CheckAVX2Support()),
      m_hasPOPCNT(CheckPOPCNTSupport())
{
}

bool CpuID::CheckSSSE3Support() const { return (Identification().leaf1Ecx & kSSSE3) != 0; }

bool CpuID::CheckAVXSupport() const
{
    constexpr ULONG kBoth = kOSXSAVE | kAVX;
    return (QueryAnew(1).ecx & kBoth) == kBoth;
}

bool CpuID::CheckAVX2Support() const { return QueryAnew(0).eax >= 7 && (QueryAnew(7).ebx & kAVX2) != 0; }

bool CpuID::CheckPOPCNTSupport() const { return (Identification().leaf1Ecx & kPOPCNT) != 0; }

bool CpuID::HasSSSE3() const { return prefSSSE3.GetValue() && m_hasSSSE3; }
bool CpuID::HasAVX() const { return prefAVX.GetValue() && m_hasAVX; }
bool CpuID::HasAVX2() const { return prefAVX2.GetValue() && m_hasAVX2; }
bool CpuID::HasPOPCNT() const { return prefPOPCNT.GetValue() && m_hasPOPCNT; }

bool CpuID::HasSufficientHardwareSupport() const
{
    const CpuID& processor = GetInstance();
    return processor.HasSSSE3() && processor.HasAVX() && processor.HasAVX2() && processor.HasPOPCNT();
}

TvlStringT<wchar_t> CpuID::GetFeatureName(EFeature feature)
{
    constexpr const wchar_t* kNames[] = {L"None", L"SSSE3", L"AVX", L"AVX2"};
    return kNames[feature >= eSSSE3 && feature <= eAVX2 ? feature : 0];
}

TvlStringT<wchar_t> CpuID::GetMissingInstructionsStr()
{
    struct Row {
        bool (CpuID::*has)() const;
        const wchar_t* text;
    };
    constexpr Row kRows[] = {{&CpuID::HasAVX, L", AVX"}, {&CpuID::HasAVX2, L", AVX2"}, {&CpuID::HasSSSE3, L", SSSE3"},
        {&CpuID::HasPOPCNT, L", POPCNT"}};
    const CpuID& processor = GetInstance();
    TvlStringT<wchar_t> missing;
    for (const auto& [has, text] : kRows)
        if (!(processor.*has)())
            missing += text;
    return missing.Mid(2);
}

void CpuID::ReadProcessorForTests() { Identification() = ProcessorIdentification(Ports::Processor::Get()); }

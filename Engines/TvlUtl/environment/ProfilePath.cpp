#include "ProfilePath.h"

#include "siblings/TvlUtils/SystemIO.h"
#include "windows/ProfileFiles.h"

namespace {
constexpr DWORD kCapacity = 260;   // MAX_PATH
}

ULONG UTLGetPrivateProfileRelPath(const wchar_t* section, const wchar_t* key, const wchar_t* base, wchar_t* out,
    ULONG outSize, const wchar_t* iniFile)
{
    wchar_t value[kCapacity] = {};
    Ports::ProfileFiles::Get().GetText(section, key, base, value, kCapacity, iniFile);
    const std::wstring path = TvlUtils::SystemIO::Path::GetAbsolutePath(base, value).Std();
    if (outSize == 0)
        return 0;
    const std::size_t copied = path.size() < outSize ? path.copy(out, path.size()) : 0;
    out[copied] = L'\0';
    return static_cast<ULONG>(copied);
}

// Descriptions of languages: any bytes are skipped, or give a code, a name and a folder beside the others.
#include "InstalledLanguages.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <cstdint>
#include <string_view>

namespace {
void Require(bool holds)
{
    if (!holds)
        __builtin_trap();
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto info = ReadLanguageInfo({reinterpret_cast<const char*>(data), size});
    if (!info)
        return 0;
    using namespace TvlUtils::SystemIO;
    const auto& [name, uiName] = info->entry;
    Require(info->language.GetIO_StrFmt().GetLength() == 3 && !uiName.IsEmpty());
    Require(name.FindOneOf(L"/\\:") < 0 && name != L"." && name != L".." && !Path::IsFullyQualified(name));
    const TvlString root = Path::Combine(L"/suite", L"Languages");
    Require(Path::Contains(root, Path::Combine(root, name)));
    return 0;
}

// Texts of preferences as the registry may hold them, and names of the cloud.
#include "CloudHelpers.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/PrefText.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <cstdint>

namespace {
void Expect(bool holds)
{
    if (!holds)
        __builtin_trap();
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const TvlString text = TvlPlatform::FromUtf8({reinterpret_cast<const char*>(data), size});
    Expect(TvlPref::DecodeText(TvlPref::EncodeText(text)) == text);
    const TvlString decoded = TvlPref::DecodeText(text);
    Expect(TvlPref::DecodeText(TvlPref::EncodeText(decoded)) == decoded);
    if (const auto list = TvlPref::ListFromText(decoded))
        Expect(TvlPref::ListFromText(TvlPref::ToText(*list)) == list);

    using namespace TvlUtl::CloudHelpers;
    Expect(UnescapeFileName(EscapeFileName(text)) == text);
    static_cast<void>(UnescapeFileName(text));

    namespace Path = TvlUtils::SystemIO::Path;
    Expect(Path::GetFolderName(text) + Path::GetFileName(text) == text);
    Expect(text.IsEmpty() || Path::Contains(text, text));
    const int half = text.GetLength() / 2;
    static_cast<void>(TvlUtils::SystemIO::File::MatchesMask(text.Left(half), text.Mid(half)));
    static_cast<void>(Path::GetRelativePath(text.Left(half), text.Mid(half), true));
    return 0;
}

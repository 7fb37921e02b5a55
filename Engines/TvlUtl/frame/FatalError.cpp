#include "FatalError.h"

#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlResources/Resources.h"
#include "windows/Windowing.h"

#include <algorithm>
#include <cwctype>
#include <string>

namespace {
constexpr int kTextSize = 260;     // characters of every text, end mark included
constexpr UINT kBeep = 16;         // MB_ICONHAND
constexpr UINT kBoxStyle = 4112;   // MB_SYSTEMMODAL | MB_ICONHAND

struct Texts {
    Texts()
    {
        using Framework::Resources::GetStringIntoBuffer;
        GetStringIntoBuffer(L"0d278df0-faf6-4fae-8605-bcecd6358b22", format, kTextSize);
        GetStringIntoBuffer(L"66f5da8e-2933-42c3-8f2c-f0b762d2d603", fatal, kTextSize);
        GetStringIntoBuffer(L"af0d9cff-f86d-4c7d-9e32-af9b51da5784", normal, kTextSize);
    }

    wchar_t format[kTextSize];
    wchar_t fatal[kTextSize];
    wchar_t normal[kTextSize];
};

/// What stands before the first "." of a path, in capitals. Paths of the engines begin with "../" and give nothing.
TvlString FileName(const char* path)
{
    std::wstring name = TvlPlatform::FromUtf8(path ? path : "").substr(0, kTextSize - 1);
    name.resize(std::min(name.find(L'.'), name.size()));
    std::transform(name.begin(), name.end(), name.begin(),
        [](wchar_t c) { return static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(c))); });
    return name;
}
}   // namespace

void UIMSG_FatalError(int code, const char* sourceFile, int line, const wchar_t* applicationName, int fatal) noexcept
try {
    // Read once: a later change of the language does not reach the box.
    static const Texts texts;
    const TvlString application =
        applicationName && *applicationName ? TvlString(applicationName) : GetAppSkinSettingData().GetAppUIName();
    TvlString caption;
    caption.Format(texts.format, application, code, FileName(sourceFile), line);
    Ports::Windowing& windowing = Ports::Windowing::Get();
    windowing.Beep(kBeep);
    windowing.ShowBox(nullptr, fatal ? texts.fatal : texts.normal, caption.Std(), kBoxStyle);
} catch (...) {
    // A box that can't be shown, for want of memory say, is lost without a word.
}

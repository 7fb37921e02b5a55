#include "AddOns.h"

#include "siblings/TvlUtils/SystemIO.h"

namespace AddOns {

namespace {
namespace SystemIO = TvlUtils::SystemIO;

constexpr const wchar_t* kPlatform = L"x64";

/// Names of the marker files without extension, in the order in which they are tried; empty ones when the program's
/// name is not known.
struct MarkerNames {
    TvlString names[2];

    MarkerNames()
    {
        const TvlString program = SystemIO::Path::GetProcessFileName(nullptr);
        if (program.IsEmpty())
            return;
        names[0] = SystemIO::Path::GetFileNameWithoutExtension(program);
        names[1] = names[0] + L'.' + kPlatform;
    }
};
}   // namespace

bool ShouldLoadAddOn(const TvlString& folder, TvlString* foundPath)
{
    static const MarkerNames markers;
    for (const TvlString& name : markers.names) {
        const TvlString path = SystemIO::Path::Combine(folder, name, L".addon");
        if (name.IsEmpty() || !SystemIO::File::Exists(path))
            continue;
        if (foundPath)
            *foundPath = path;
        return true;
    }
    return false;
}

}   // namespace AddOns

// Settings files of any bytes become preferences in the registry.
#include "IniUpdateRegistry.h"
#include "siblings/TvlPref/IniIoPolicy.h"
#include "siblings/TvlPref/StoredRegistry.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <cstdint>
#include <cstdlib>

namespace {
using TvlPref::IniIoPolicy;

const TvlString& File()
{
    namespace Path = TvlUtils::SystemIO::Path;
    static const TvlString path = Path::GetTempFileNameW(Path::GetTempFolder(), L"fuzz", L".ini");
    return path;
}

/// A text that reads back does so once it has been read and written again.
void CheckForm(const TvlString& text)
{
    const TvlString meant = IniIoPolicy::Decode(text);
    if (IniIoPolicy::ReadsBack(meant) && IniIoPolicy::Decode(IniIoPolicy::Encode(meant)) != meant)
        std::abort();
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {});
    PREFUTILS::StoredRegistry registry(PREFUTILS::MakeMemoryStore());
    PREFUTILS::IRegistry::SetForTests(&registry);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!TvlUtils::SystemIO::File::WriteAside(File(), bytes))
        std::abort();   // a run that reads nothing finds nothing
    IniUpdateRegistry(File().c_str());
    for (const auto& [section, entries] : TvlUtils::IniParser(File()).GetAllData())
        for (const auto& [name, value] : entries)
            CheckForm(value);
    if (registry.OpenKeys() != 0)
        std::abort();
    PREFUTILS::IRegistry::SetForTests(nullptr);
    return 0;
}

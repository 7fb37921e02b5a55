// Writes values into the registry and tells of each that is written: registry_writer PATH NAME COUNT [--batch]
// With --batch all of them are one batch, which is committed at the end.
#include "WUTLRegistry.h"
#include "siblings/TvlPref/IRegistry.h"
#include "windows/Modules.h"

#include <cstdio>
#include <optional>
#include <string>

int main()
{
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() < 3)
        return 1;
    WUTLRegistry key;
    if (key.OpenKey(arguments[0].c_str(), 1) != 0)
        return 2;
    std::optional<PREFUTILS::RegistryBatch> batch;
    if (arguments.size() > 3 && arguments[3] == L"--batch")
        batch.emplace();
    const ULONG count = static_cast<ULONG>(std::stoul(arguments[2]));
    for (ULONG i = 0; i < count; ++i) {
        if (key.SetValue((arguments[1] + std::to_wstring(i)).c_str(), i) != 0)
            return 3;
        std::printf("%u\n", static_cast<unsigned>(i));
        std::fflush(stdout);
    }
    return batch && batch->Commit() != 0 ? 4 : 0;
}

// Lines of event files: any bytes are an event or refused, and what is an event comes back the same when it is written.
#include "siblings/TvlConfig/EventLog.h"

#include <cstdint>

namespace {
void Require(bool holds)
{
    if (!holds)
        __builtin_trap();
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto event = ProductAnalytics::ParseEvent(bytes);
    if (!event)
        return 0;
    const std::string line = ProductAnalytics::FormatEvent(*event);
    Require(line.find('\n') == line.size() - 1);
    Require(ProductAnalytics::ParseEvent(line) == event);
    // Without its end it is still whole, and any shorter one is none.
    Require(ProductAnalytics::ParseEvent(std::string_view(line).substr(0, line.size() - 1)) == event);
    Require(!ProductAnalytics::ParseEvent(std::string_view(line).substr(0, line.size() - 2)));
    return 0;
}

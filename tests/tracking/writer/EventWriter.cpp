// Sends events to the user's folder: event_writer NAME COUNT
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdlib>
#include <string>

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    const TvlString name = TvlPlatform::FromUtf8(arguments[1]);
    for (int i = 0; i < std::atoi(arguments[2]); ++i)
        ProductAnalytics::GetInstance().SendEvent(name, {{L"number", std::to_wstring(i)}}, TvlString());
    return 0;
}

#include "TextConversions.h"

#include <string_view>

namespace {
constexpr std::string_view kTypes = "diuxXocCsSpfFeEgGaAn";
constexpr std::string_view kPlacesAndStars = "0123456789.*";
constexpr std::string_view kSizes = "hlLjztwI";
constexpr std::string_view kWindowsSizes[] = {"I64", "I32"};
}   // namespace

std::vector<TextConversion> ConversionsOf(const std::string& text, bool takesBlank)
{
    const auto among = [&](std::size_t at, std::string_view characters) {
        return at < text.size() && characters.find(text[at]) != std::string_view::npos;
    };
    std::vector<TextConversion> conversions;
    for (std::size_t at = 0; (at = text.find('%', at)) != std::string::npos;) {
        TextConversion conversion{at++, 0, {}};
        while (among(at, takesBlank ? "-+ #0" : "-+#0"))
            ++at;
        for (; among(at, kPlacesAndStars); ++at)
            if (text[at] == '*')
                conversion.arguments.emplace_back("*");
        const std::size_t size = at;
        for (const std::string_view windows : kWindowsSizes)
            if (text.compare(at, windows.size(), windows) == 0)
                at += windows.size();
        while (among(at, kSizes))
            ++at;
        const bool isPercent = among(at, "%") && at == conversion.begin + 1;
        if (!isPercent && !among(at, kTypes))
            continue;   // a percent sign of prose
        conversion.end = ++at;
        if (!isPercent)
            conversion.arguments.push_back(text.substr(size, at - size));
        conversions.push_back(std::move(conversion));
    }
    return conversions;
}

std::vector<std::string> ArgumentsOf(const std::string& text, bool takesBlank)
{
    std::vector<std::string> arguments;
    for (const TextConversion& conversion : ConversionsOf(text, takesBlank))
        arguments.insert(arguments.end(), conversion.arguments.begin(), conversion.arguments.end());
    return arguments;
}

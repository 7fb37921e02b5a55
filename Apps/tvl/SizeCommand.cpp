// tvl size: byte counts as text.
#include "Commands.h"
#include "DataSize.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {
struct Size {
    std::string text;
    bool json = false;

    unsigned long long Bytes() const
    {
        unsigned long long bytes = 0;
        const char* const end = text.data() + text.size();
        const auto [rest, failed] = std::from_chars(text.data(), end, bytes);
        if (failed != std::errc() || rest != end)
            EndWithBadInput("\"" + text + "\" is no number of bytes from 0 to 18446744073709551615");
        return bytes;
    }

    void Run() const
    {
        const unsigned long long bytes = Bytes();
        double value = 0.0;
        const TvlUtl::ESizeType type = TvlUtl::ConvertByteSize(bytes, value);
        const std::string shown = TvlPlatform::ToUtf8(TvlUtl::FormatDataSize(bytes));
        if (json)
            std::cout << nlohmann::ordered_json{{"bytes", bytes}, {"class", static_cast<int>(type)}, {"value", value},
                {"text", shown}}
                      << '\n';
        else
            std::cout << shown << '\n';
    }
};
}   // namespace

void AddSizeCommand(CLI::App& app)
{
    const auto size = std::make_shared<Size>();
    CLI::App* const command = app.add_subcommand("size", "shows a number of bytes as people read it");
    command->add_option("bytes", size->text, "the number")->required();
    command->add_flag("--json", size->json, "print a JSON object");
    command->callback([size] { size->Run(); });
}

// tvl guidmap: makes "guidmap.dat" and looks identifiers up in it.
#include "Commands.h"
#include "GuidMap.h"
#include "GuidText.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

namespace {
namespace File = TvlUtils::SystemIO::File;

struct Build {
    std::string list;
    std::string file;

    [[noreturn]] void EndAtLine(std::size_t line, const std::string& problem) const
    {
        EndWithBadInput(list + ":" + std::to_string(line) + ": " + problem);
    }

    GUID Identifier(const std::string& text, std::size_t line) const
    {
        const auto guid = ParseGuid(text);
        if (!guid)
            EndAtLine(line, "\"" + text + "\" is no identifier");
        return *guid;
    }

    /// Lines of two identifiers; what follows "#" is a comment.
    std::vector<TvlUtl::GuidPair> Pairs(const std::string& text) const
    {
        std::vector<TvlUtl::GuidPair> pairs;
        std::set<std::string> seen;   // each side has each identifier once, else a search would find either partner
        std::istringstream lines(text);
        std::string line;
        for (std::size_t number = 1; std::getline(lines, line); ++number) {
            std::istringstream words(line.substr(0, line.find('#')));
            std::string engine;
            std::string application;
            std::string more;
            if (!(words >> engine))
                continue;
            if (!(words >> application) || words >> more)
                EndAtLine(number, "an engine's and an application's identifier are expected");
            pairs.push_back({Identifier(engine, number), Identifier(application, number)});
            if (!seen.insert("engine " + FormatGuid(pairs.back().engine)).second)
                EndAtLine(number, engine + " has a partner already");
            if (!seen.insert("application " + FormatGuid(pairs.back().application)).second)
                EndAtLine(number, application + " has a partner already");
        }
        return pairs;
    }

    void Run() const
    {
        std::string text;
        if (const auto read = File::ReadAll(TvlPlatform::FromUtf8(list), text); !read)
            EndWithBadInput(list + ": " + TvlPlatform::ToUtf8(read.Reason()));
        const auto pairs = Pairs(text);
        if (const auto written = File::WriteAside(TvlPlatform::FromUtf8(file), TvlUtl::MakeGuidMap(pairs)); !written)
            EndWithBadInput(file + ": " + TvlPlatform::ToUtf8(written.Reason()));
        std::cout << pairs.size() << (pairs.size() == 1 ? " pair\n" : " pairs\n");
    }
};

struct Find {
    std::string text;
    bool fromApplication = false;
    bool json = false;

    void Run() const
    {
        const auto from = ParseGuid(text);
        if (!from)
            EndWithBadInput("\"" + text + "\" is no identifier");
        GUID to{};
        const auto map = fromApplication ? UTLMapApp2EngGUID : UTLMapEng2AppGUID;
        if (!map(&*from, &to))
            EndWithBadInput(FormatGuid(*from) + " has no partner in the suite's \"guidmap.dat\"");
        if (json)
            std::cout << nlohmann::ordered_json{{"from", FormatGuid(*from)}, {"to", FormatGuid(to)}} << '\n';
        else
            std::cout << FormatGuid(to) << '\n';
    }
};
}   // namespace

void AddGuidMapCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("guidmap", "pairs identifiers of the engines with those of the applications");
    command->require_subcommand(1);

    const auto build = std::make_shared<Build>();
    CLI::App* const building = command->add_subcommand("build", "makes a \"guidmap.dat\"");
    building
        ->add_option("list", build->list,
            "a text file with an engine's and an application's identifier a line; \"#\" begins a comment")
        ->required();
    building->add_option("file", build->file, "the file to make; an older one is replaced")->required();
    building->callback([build] { build->Run(); });

    const auto find = std::make_shared<Find>();
    CLI::App* const finding = command->add_subcommand("find", "looks up a partner in the suite's \"guidmap.dat\"");
    finding->add_option("identifier", find->text, "an engine's identifier")->required();
    finding->add_flag("--application", find->fromApplication, "the identifier is an application's");
    finding->add_flag("--json", find->json, "print a JSON object");
    finding->callback([find] { find->Run(); });
}

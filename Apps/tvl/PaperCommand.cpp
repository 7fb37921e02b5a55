// tvl paper: the store of papers.
#include "Commands.h"
#include "MeasureOptions.h"
#include "PaperLint.h"
#include "PaperTable.h"
#include "PaperTypes.h"
#include "TextInput.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

namespace {
constexpr int kInch = 1;
constexpr int kMillimetre = 2;

/// The store; a file that can't be read, or has papers that can't be placed, ends the command.
CPaperTypeMgr& Papers()
try {
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    if (papers.GetCount() == 0)
        EndWithBadInput("there are no papers: neither the user's file nor the suite's gives any");
    return papers;
} catch (const std::out_of_range&) {
    EndWithBadInput("the file of papers has an id beyond its number of papers; `tvl paper lint` tells which");
}

struct PaperRequest {
    std::string name;
    double width = 0.0;
    double height = 0.0;
    std::string unit = "mm";
    bool all = false;
    bool json = false;
    std::string text;
    unsigned first = 1;
    unsigned pages = 1;
    std::string file;
    TextInput input;

    int Unit() const { return unit == "in" ? kInch : kMillimetre; }
};

std::string Name(const PaperTypeInformation& paper) { return TvlPlatform::ToUtf8(paper.DisplayName); }

void Print(std::int64_t index, const PaperTypeInformation& paper, bool json)
{
    const std::string size = TvlPlatform::ToUtf8(TvlUtl::GetPageDimensions(paper));
    if (json) {
        std::cout << nlohmann::ordered_json{{"index", index}, {"name", Name(paper)}, {"width", paper.Width / 10000.0},
            {"height", paper.Height / 10000.0}, {"text", size}, {"custom", index >= Papers().GetPredefinedCount()},
            {"hidden", paper.Hidden}, {"printer", CPaperTypeMgr::GetDevModeFromPaper(static_cast<PaperType>(index))}}
                  << '\n';
        return;
    }
    std::cout << std::setw(4) << index << "  " << Name(paper) << "  " << size << (paper.Hidden ? "  (hidden)" : "")
              << '\n';
}

std::vector<PaperTypeInformation> AllPapers()
{
    std::vector<PaperTypeInformation> papers;
    for (PaperTypeInformation paper; Papers().GetPaperInfoAt(static_cast<int>(papers.size()), paper);)
        papers.push_back(paper);
    return papers;
}

/// Writes the user's file. Reads it again, since the store does not tell whether it could be written.
void Save()
{
    const auto written = AllPapers();
    CPaperTypeMgr::Shutdown();
    CPaperTypeMgr::ReleaseInstance(false);
    const auto read = AllPapers();
    const auto isSame = [](const PaperTypeInformation& a, const PaperTypeInformation& b) {
        return a.DisplayName == b.DisplayName && a.Width == b.Width && a.Height == b.Height && a.Hidden == b.Hidden;
    };
    if (!std::equal(written.begin(), written.end(), read.begin(), read.end(), isSame))
        EndWithBadInput("the user's file of papers could not be written");
}

/// The name that a paper of the user's own is to have.
TvlString NewName(const std::string& bytes)
{
    const bool isBroken = std::any_of(bytes.begin(), bytes.end(), [](unsigned char c) { return c < ' ' || c == 127; });
    if (bytes.empty() || isBroken)
        EndWithBadInput("a paper needs a name without line breaks and other control characters");
    return TvlPlatform::FromUtf8(bytes);
}

void List(const PaperRequest& request)
{
    PaperTypeInformation paper;
    const auto show = [&](std::int64_t index) {
        if (Papers().GetPaperInfoAt(static_cast<int>(index), paper) && (request.all || index > kPaperNone))
            Print(index, paper, request.json);
    };
    if (!request.all) {
        for (const std::int64_t index : Papers().GetPaperOrder())
            show(index);
        return;
    }
    for (std::int64_t index = 0; index < Papers().GetCount(); ++index)
        show(index);
}

PaperTypeInformation Size(const PaperRequest& request)
{
    PaperTypeInformation paper = CPaperTypeMgr::SetCustomPaper(request.width, request.height, request.Unit());
    if (paper.Width <= 0 || paper.Height <= 0)
        EndWithBadInput("a paper needs a width and a height that are above 0 and not too large");
    return paper;
}

void Find(const PaperRequest& request)
{
    const PaperTypeInformation size = Size(request);
    PaperTypeInformation paper;
    std::int64_t index = Papers().FindPredefinedPaperIndex(size, true);
    if (index == -1)
        index = Papers().FindCustomPaper(size.Width, size.Height, paper);
    if (index == -1)
        index = Papers().FindCustomPaper(size.Height, size.Width, paper);
    if (!Papers().GetPaperInfoAt(static_cast<int>(index), paper))
        EndWithBadInput("no paper has this size");
    Print(index, paper, request.json);
}

void Add(const PaperRequest& request)
{
    PaperTypeInformation paper = Size(request);
    paper.DisplayName = NewName(request.name);
    paper.Rotatable = true;
    Papers().AddCustomPaper(paper, true);
    Save();
    Print(Papers().FindCustomPaperIndex(paper.DisplayName), paper, request.json);
}

void Delete(const PaperRequest& request)
{
    const std::int64_t index = Papers().FindCustomPaperIndex(TvlPlatform::FromUtf8(request.name));
    if (index == -1)
        EndWithBadInput("no paper of the user's own has the name \"" + request.name + "\"");
    Papers().DeletePaper(index, true);
    Save();
}

void Hide(const PaperRequest& request)
{
    const TvlString wanted = TvlPlatform::FromUtf8(request.name);
    PaperTypeInformation paper;
    for (int index = kPaperNone + 1; index < Papers().GetPredefinedCount(); ++index)
        if (Papers().GetPaperInfoAt(index, paper) && paper.DisplayName.CompareNoCase(wanted) == 0) {
            Papers().DeletePaper(index, false);
            return Save();
        }
    EndWithBadInput("no predefined paper has the name \"" + request.name + "\"");
}

void Default(const PaperRequest& request)
{
    auto type = OSUtils::LocaleEnvironment::GetUnits() == kInch ? kPaperLetter : kPaperA4;
    OSUtils::LocaleEnvironment::GetPaperType(type);
    PaperTypeInformation paper;
    if (!Papers().GetPaperInfo(type, paper))
        EndWithBadInput("the store lacks paper " + std::to_string(type));
    Print(type, paper, request.json);
}

void Range(const PaperRequest& request)
{
    std::vector<unsigned> pages;
    TvlUtl::MakePageRangeFromString(request.first, request.pages, TvlPlatform::FromUtf8(request.text), pages);
    if (request.json) {
        std::cout << nlohmann::json(pages) << '\n';
        return;
    }
    for (std::size_t i = 0; i < pages.size(); ++i)
        std::cout << (i > 0 ? " " : "") << pages[i];
    std::cout << '\n';
}

// Nothing is stored before the last line: who interrupts it finds the papers as they were.
void Import(const PaperRequest& request)
{
    int added = 0;
    request.input.ForEach([&](const std::string& line) {
        const auto found = ReadPaperLine(line);
        if (!found)
            return;
        PaperTypeInformation paper = CPaperTypeMgr::SetCustomPaper(found->width, found->height, found->unit);
        paper.DisplayName = TvlPlatform::FromUtf8(found->name);
        paper.Rotatable = true;
        if (paper.Width <= 0 || paper.Height <= 0)
            return;   // too small or too large to be kept
        if (Papers().IsPredefinedPaper(paper, true) || Papers().IsCustomPaper(paper, true))
            return;   // there is one of this size
        Papers().AddCustomPaper(paper, true);
        ++added;
    });
    Save();
    if (request.json)
        std::cout << nlohmann::json{{"added", added}} << '\n';
    else
        std::cout << added << " papers added\n";
}

void RunLint(const PaperRequest& request)
{
    const auto faults = LintPapers(request.file);
    if (request.json)
        std::cout << nlohmann::json(faults).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    for (const std::string& fault : faults)
        if (!request.json)
            std::cout << fault << '\n';
    if (!faults.empty())
        EndWithBadInput(std::to_string(faults.size()) + " faults in \"" + request.file + "\"");
}

constexpr unsigned kMostPages = 10'000'000;   // far above any document; open ranges list them all

using Request = std::shared_ptr<PaperRequest>;

void AddJson(CLI::App& command, const Request& request) { command.add_flag("--json", request->json, "print JSON"); }

void AddSize(CLI::App& command, const Request& request)
{
    command.add_option("width", request->width, "width")->required();
    command.add_option("height", request->height, "height")->required();
    command.add_option("--unit,-u", request->unit, "unit of both")
        ->check(CLI::IsMember({"mm", "in"}))
        ->capture_default_str();
}

CLI::App& Sub(
    CLI::App& parent, const Request& request, const char* name, const char* what, void (*run)(const PaperRequest&))
{
    CLI::App& command = *parent.add_subcommand(name, what);
    command.callback([request, run] { run(*request); });
    return command;
}
void AddEdits(CLI::App& paper, const Request& request)
{
    CLI::App& add = Sub(paper, request, "add", "adds a paper of the user's own, or changes it", Add);
    add.add_option("name", request->name, "its name")->required();
    AddSize(add, request);
    AddJson(add, request);
    Sub(paper, request, "delete", "deletes a paper of the user's own", Delete)
        .add_option("name", request->name, "its name")
        ->required();
    Sub(paper, request, "hide", "hides a predefined paper", Hide)
        .add_option("name", request->name, "its name")
        ->required();
    CLI::App& import = Sub(paper, request, "import", "adds the papers of a table of libpaper or CUPS", Import);
    request->input.AddOptions(import, "lines of such a table");
    AddJson(import, request);
}
}   // namespace

void AddPaperCommand(CLI::App& app)
{
    CLI::App& paper = *app.add_subcommand("paper", "lists paper sizes and looks after the user's own");
    paper.require_subcommand(1);
    const auto request = std::make_shared<PaperRequest>();
    CLI::App& list = Sub(paper, request, "list", "lists papers in the order of the user's country", List);
    list.add_flag("--all", request->all, "hidden ones too, in the order of the store");
    AddJson(list, request);
    CLI::App& find = Sub(paper, request, "find", "tells which paper has a size, either way round", Find);
    AddSize(find, request);
    AddJson(find, request);
    AddEdits(paper, request);
    AddJson(Sub(paper, request, "default", "tells the usual paper of the user's region", Default), request);
    CLI::App& range = Sub(paper, request, "range", "tells the pages that a text such as \"1-3,5~\" names", Range);
    range.add_option("text", request->text, "numbers and ranges; \"~\" takes every second page")->required();
    range.add_option("--first", request->first, "first page")->capture_default_str();
    range.add_option("--pages", request->pages, "number of pages")->required()->check(CLI::Range(0u, kMostPages));
    AddJson(range, request);
    CLI::App& lint = Sub(paper, request, "lint", "looks for faults in a file of papers", RunLint);
    lint.add_option("file", request->file, "a master or a user's file")->required();
    AddJson(lint, request);
}

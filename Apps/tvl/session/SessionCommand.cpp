// tvl session: an application's life from its start to its end, in a folder of its own.
#include "SessionCommand.h"

#include "Commands.h"
#include "Session.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

namespace {
constexpr int kFailedStep = 1;

/// What became of a step.
struct Outcome {
    const Step* step;
    StepLog log;
    std::string problem;   // empty for a success
    bool wasRun = true;
    int exitCode = 0;
};

Outcome Run(const Step& step, Session& session)
{
    Outcome outcome{&step, StepLog(session.folder.Path()), {}};
    try {
        step.run(session, outcome.log);
    } catch (const CLI::RuntimeError& end) {
        outcome.exitCode = end.get_exit_code();
        outcome.problem = outcome.exitCode == kInterrupted ? "interrupted" : "refused; standard error has the reason";
    } catch (const std::exception& failure) {
        outcome.exitCode = kFailedStep;
        outcome.problem = failure.what();
    }
    return outcome;
}

void Print(const Outcome& outcome)
{
    constexpr int kColumn = 12;
    std::string name = outcome.step->name;
    const auto line = [&](const std::string& text) {
        std::cout << std::left << std::setw(kColumn) << std::exchange(name, {}) << text << '\n';
    };
    for (const std::string& text : outcome.log.Lines())
        line(text);
    for (const std::string& file : outcome.log.Files())
        line("-> " + file);
    if (!outcome.wasRun)
        line("left out");
    else if (!outcome.problem.empty())
        line("FAILED: " + outcome.problem);
    std::cout.flush();
}

nlohmann::ordered_json Describe(const Outcome& outcome)
{
    nlohmann::ordered_json step = {{"name", outcome.step->name},
        {"result",
            !outcome.wasRun               ? "left out"
                : outcome.problem.empty() ? "ok"
                                          : "failed"},
        {"did", outcome.log.Lines()}, {"files", outcome.log.Files()}};
    if (!outcome.problem.empty())
        step["problem"] = outcome.problem;
    return step;
}

struct Options {
    std::string folder;
    std::string photo;
    bool json = false;

    void Run() const;
};

/// Does all steps, and hands out what became of each as soon as it is known. Gives the exit code.
template <class Report>
int Play(Session& session, Report report)
{
    int exitCode = 0;
    const auto take = [&](const Outcome& outcome) {
        if (exitCode == 0)
            exitCode = outcome.exitCode;
        report(outcome);
    };
    for (const Step& step : LifeSteps())
        take(exitCode == 0 ? Run(step, session) : Outcome{&step, StepLog(session.folder.Path()), {}, false});
    for (const Step& step : ClosingSteps())
        take(Run(step, session));
    return exitCode;
}

void Options::Run() const
{
    const SessionFolder& place = SessionFolder::Enter(folder);
    Session session(place, std::u8string(photo.begin(), photo.end()));
    nlohmann::ordered_json steps = nlohmann::ordered_json::array();
    const int exitCode =
        Play(session, [&](const Outcome& outcome) { json ? steps.push_back(Describe(outcome)) : Print(outcome); });
    const std::string path = TvlPlatform::ToUtf8(place.Path()), registry = TvlPlatform::ToUtf8(place.Registry());
    if (json)
        std::cout << nlohmann::ordered_json{{"folder", path}, {"registry", registry}, {"succeeded", exitCode == 0},
            {"steps",
                steps}}.dump(2, ' ', false, nlohmann::json::error_handler_t::replace)
                  << '\n';
    else
        std::cout << "\nThe files are in " << (folder.empty() ? path : folder) << '\n';
    std::cout.flush();
    if (exitCode != 0)
        throw CLI::RuntimeError(exitCode);
}
}   // namespace

void AddSessionCommand(CLI::App& app)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        app.add_subcommand("session", "plays an application's life, from its start to its end, in a folder of its own");
    command->add_option("--folder", options->folder, "where everything happens; a new one if it is not given");
    command->add_option("--photo", options->photo, "a photo to look at; it is copied before it is changed");
    command->add_flag("--json", options->json, "print one JSON object");
    command->callback([options] { options->Run(); });
}

// What the commands on measures have in common: units, angles, the locale, and messages about texts.
#pragma once

#include "AngleMode.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <optional>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

/// A unit as it was written on the command line.
struct UnitName {
    std::string text;

    /// The display id; ends the command with a message when there is no such unit.
    int Id() const;
    /// The id where it is a measure that the procedural functions (Units.h) convert; else ends the command likewise.
    int MeasureId() const;
};

/// The number that a whole text is, with a point in every locale; none for what is not finite.
std::optional<double> FiniteNumber(std::string_view text);

/// Options of a command that reads or writes numbers.
struct NumberOptions {
    std::string locale;
    bool degrees = false;
    bool json = false;

    void AddOptions(CLI::App& command);
    /// The options without those of reading angles.
    void AddOutputOptions(CLI::App& command);
    /// Takes the locale into use; ends the command with a message when it is unknown.
    void Apply() const;
    DRG AngleMode() const { return degrees ? DRG::Degrees : DRG::Radians; }
};

/// Prints a text that has no value, with a mark below the place, to standard error.
void PrintProblem(const TvlString& text, std::size_t position, const TvlString& problem);

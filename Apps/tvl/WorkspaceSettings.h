// What the settings of a workspace would do to the application's preferences.
#pragma once

#include "PreferenceTree.h"

#include <string>
#include <vector>

/// One value that a workspace brings, changes or takes away.
struct PreferenceChange {
    /// In the order in which they are shown.
    enum class Kind {
        PlugIns,   // where plug-ins are loaded from
        Unknown,   // this application has no such preference: somebody else put it there
        Other,
    };
    char sign;   // '+' gained, '-' lost, '~' changed
    Kind kind;
    PreferenceTree::Place place;
    TvlString before;   // empty for '+'
    TvlString after;    // empty for '-'
};

/// How `after` differs from `before`, by kind, and then by place.
std::vector<PreferenceChange> CompareTrees(const PreferenceTree& before, const PreferenceTree& after);
/// The changes line by line, under a heading for each kind.
std::string ShowChanges(const std::vector<PreferenceChange>& changes);

/// What is to be said of a settings file: values of the first two kinds, and values that don't read back.
std::string LintSettings(const TvlString& path);

/// A text from outside for a terminal: what that might take for a command is escaped, and long texts are cut.
std::string Shown(const TvlString& text);
/// The same in quotation marks.
std::string Quoted(const TvlString& text);

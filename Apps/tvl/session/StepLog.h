// What the steps of a session tell.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <stdexcept>
#include <string>
#include <vector>

/// A step could not do what it is there for. The text says what was found, in one line of UTF-8.
class StepFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Ends the step unless something holds.
void Require(bool holds, const std::string& problem);

/// What one step did, in lines of UTF-8.
class StepLog {
public:
    /// @param folder the session's own; files in it are named from there on
    explicit StepLog(TvlString folder) : m_folder(std::move(folder)) { }

    void Did(const std::string& line) { m_lines.push_back(line); }
    /// A file that stays when the session has ended. It must be there.
    void Left(const TvlString& path);
    /// A path as it is shown: from the session's folder on where it lies in there, and in one line.
    std::string Name(const TvlString& path) const;

    const std::vector<std::string>& Lines() const { return m_lines; }
    const std::vector<std::string>& Files() const { return m_files; }

private:
    TvlString m_folder;   // without a separator at its end
    std::vector<std::string> m_lines;
    std::vector<std::string> m_files;
};

/// "1 page", "2 pages".
std::string Count(std::size_t count, const std::string& one);

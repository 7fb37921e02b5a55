// A line at the terminal's lower end that tells how far a long command is.
#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <optional>

class ProgressBar {
public:
    /// @param out     the terminal
    /// @param columns its width; without one nothing is ever shown
    ProgressBar(std::ostream& out, std::optional<int> columns) : m_out(out), m_columns(columns) { }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar() { Clear(); }

    /// Draws the line; one that is still there is renewed a few times a second at most. `output` is flushed before, as it may go to the same terminal.
    void Show(std::size_t done, std::size_t count, std::ostream& output);
    /// Takes the line away: call it before anything else is written.
    void Clear();

private:
    std::ostream& m_out;
    std::optional<int> m_columns;
    std::size_t m_shown = 0;   // characters on the line
    std::chrono::steady_clock::time_point m_next;
};

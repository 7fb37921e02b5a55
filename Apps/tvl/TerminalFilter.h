// What stands between the program's texts and a terminal.
#pragma once

#include <iosfwd>
#include <optional>
#include <streambuf>
#include <string>

/// Passes UTF-8 on to another buffer, control characters as "?": names and texts from files may hold sequences that a
/// terminal would obey. Ends of lines and tabs stay, and so does all that is none of them.
class TerminalFilter final : public std::streambuf {
public:
    /// The target must outlast the filter.
    explicit TerminalFilter(std::streambuf& target) : m_target(target) { }
    TerminalFilter(const TerminalFilter&) = delete;
    TerminalFilter& operator=(const TerminalFilter&) = delete;
    /// Passes on the beginning of a character whose rest never came.
    ~TerminalFilter() override;

protected:
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(const char* bytes, std::streamsize size) override;
    int sync() override;

private:
    void Filter(char byte);

    std::streambuf& m_target;
    std::string m_filtered;
    bool m_hasLead = false;   // of a character that may be a control one
};

/// Stands before those of the program's standard streams that are shown by a terminal, as long as it lives. What goes to a
/// file or another program stays as it is.
class TerminalGuard {
public:
    TerminalGuard();
    TerminalGuard(const TerminalGuard&) = delete;
    TerminalGuard& operator=(const TerminalGuard&) = delete;
    ~TerminalGuard();

private:
    std::streambuf* const m_output;
    std::streambuf* const m_errors;
    std::optional<TerminalFilter> m_outputFilter;
    std::optional<TerminalFilter> m_errorFilter;
};

/// Standard error without a filter, for who moves the cursor there and filters texts on its own.
std::ostream& UnfilteredErrors();

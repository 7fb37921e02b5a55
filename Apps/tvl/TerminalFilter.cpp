#include "TerminalFilter.h"

#include "windows/Terminal.h"

#include <iostream>
#include <utility>

namespace {
constexpr char kMark = '?';
constexpr char kLead = '\xC2';   // of U+0080 to U+00BF, the first half of which are control characters

bool IsControl(char byte) { return (byte >= 0 && byte < ' ' && byte != '\n' && byte != '\t') || byte == 0x7F; }
bool IsLaterControl(char behindLead) { return (static_cast<unsigned char>(behindLead) & 0xE0) == 0x80; }
}   // namespace

TerminalFilter::~TerminalFilter()
{
    if (m_hasLead)
        m_target.sputc(kLead);
}

void TerminalFilter::Filter(char byte)
{
    const bool hadLead = std::exchange(m_hasLead, false);
    if (hadLead && IsLaterControl(byte)) {
        m_filtered += kMark;
        return;
    }
    if (hadLead)
        m_filtered += kLead;
    m_hasLead = byte == kLead;
    if (!m_hasLead)
        m_filtered += IsControl(byte) ? kMark : byte;
}

std::streambuf::int_type TerminalFilter::overflow(int_type byte)
{
    if (traits_type::eq_int_type(byte, traits_type::eof()))
        return traits_type::not_eof(byte);
    const char character = traits_type::to_char_type(byte);
    return xsputn(&character, 1) == 1 ? byte : traits_type::eof();
}

std::streamsize TerminalFilter::xsputn(const char* bytes, std::streamsize size)
{
    m_filtered.clear();
    for (std::streamsize i = 0; i < size; ++i)
        Filter(bytes[i]);
    const auto filtered = static_cast<std::streamsize>(m_filtered.size());
    return m_target.sputn(m_filtered.data(), filtered) == filtered ? size : 0;
}

int TerminalFilter::sync() { return m_target.pubsync(); }

TerminalGuard::TerminalGuard() : m_output(std::cout.rdbuf()), m_errors(UnfilteredErrors().rdbuf())
{
    const Ports::Terminal& terminal = Ports::Terminal::Get();
    if (terminal.ShowsOutput())
        std::cout.rdbuf(&m_outputFilter.emplace(*m_output));
    if (terminal.ErrorColumns())
        std::cerr.rdbuf(&m_errorFilter.emplace(*m_errors));
}

TerminalGuard::~TerminalGuard()
{
    std::cout.rdbuf(m_output);
    std::cerr.rdbuf(m_errors);
}

std::ostream& UnfilteredErrors()
{
    static std::ostream errors(std::cerr.rdbuf());
    return errors;
}

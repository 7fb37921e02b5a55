#include "ProgressBar.h"

#include <algorithm>
#include <ostream>
#include <string>

void ProgressBar::Show(std::size_t done, std::size_t count, std::ostream& output)
{
    constexpr auto kPause = std::chrono::milliseconds(100);
    constexpr int kWidest = 40;
    const auto now = std::chrono::steady_clock::now();
    if (!m_columns || count == 0 || (m_shown > 0 && now < m_next))
        return;
    m_next = now + kPause;

    const std::string numbers = " " + std::to_string(done) + " of " + std::to_string(count);
    // The last column stays free: a full line would move the terminal on.
    const int room = std::min(*m_columns - static_cast<int>(numbers.size()) - 3, kWidest);
    std::string line = numbers.substr(1);
    if (room > 0) {
        const auto filled = static_cast<std::size_t>(room) * done / count;
        line =
            "[" + std::string(filled, '#') + std::string(static_cast<std::size_t>(room) - filled, ' ') + "]" + numbers;
    }
    output.flush();
    Clear();
    m_out << line << std::flush;
    m_shown = line.size();
}

void ProgressBar::Clear()
{
    if (m_shown > 0)
        m_out << '\r' << std::string(m_shown, ' ') << '\r' << std::flush;
    m_shown = 0;
}

// Page numbers of texts such as "1,3-5,8~".
#include "PaperTypes.h"

#include <algorithm>
#include <cwctype>
#include <limits>
#include <string_view>

namespace {
constexpr unsigned kNoNumber = 0xFFFFFFFF;
constexpr std::size_t kMostDigits = 10;

bool IsSpace(wchar_t c) { return std::iswspace(static_cast<std::wint_t>(c)) != 0; }
bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// Each run of letters becomes one comma.
std::wstring WithoutLetters(const std::wstring& text)
{
    std::wstring result;
    bool wasLetter = false;
    for (const wchar_t c : text) {
        const bool isLetter = std::iswalpha(static_cast<std::wint_t>(c)) != 0;
        if (!isLetter)
            result += c;
        else if (!wasLetter)
            result += L',';
        wasLetter = isLetter;
    }
    return result;
}

/// A number and the character behind it.
struct Item {
    bool hasNumber = false;
    unsigned number = kNoNumber;
    wchar_t separator = 0;   // 0 at the end, and behind a number that was cut at ten digits
};

Item TakeItem(std::wstring_view& rest)
{
    const auto skipBlanks = [&] {
        while (!rest.empty() && IsSpace(rest.front()))
            rest.remove_prefix(1);
    };
    skipBlanks();
    Item item;
    unsigned long long number = 0;
    for (std::size_t digits = 0; digits < kMostDigits && !rest.empty() && IsDigit(rest.front()); ++digits) {
        number = number * 10 + static_cast<unsigned>(rest.front() - L'0');
        item.hasNumber = true;
        rest.remove_prefix(1);
    }
    if (item.hasNumber)
        item.number = static_cast<unsigned>(std::min<unsigned long long>(number, std::numeric_limits<int>::max()));
    skipBlanks();
    if (!rest.empty() && !IsDigit(rest.front())) {
        item.separator = rest.front();
        rest.remove_prefix(1);
    }
    return item;
}

/// The pages that a document has, and the vector that takes those which are named.
class Pages {
public:
    Pages(unsigned first, unsigned count, std::vector<unsigned>& pages)
        : m_first(first), m_end(first + count), m_pages(pages)
    {
    }

    void Add(unsigned page)
    {
        if (m_first <= page && page < m_end)
            m_pages.push_back(page);
    }

    /// From one page to another by steps, upward or downward. Steps over what is out of range: a text may name billions.
    void AddRange(unsigned start, unsigned end, unsigned step)
    {
        if (m_first >= m_end)
            return;
        if (start > end) {
            const unsigned lowest = std::max(end, m_first);
            for (long long page = Aligned(start, std::min(start, m_end - 1), step); page >= lowest; page -= step)
                m_pages.push_back(static_cast<unsigned>(page));
            return;
        }
        const unsigned highest = std::min(end, m_end - 1);
        for (long long page = Aligned(start, std::max(start, m_first), step); page <= highest; page += step)
            m_pages.push_back(static_cast<unsigned>(page));
    }

private:
    /// The first page of the walk from `start` at `bound` or, where the step passes it by, behind it.
    static long long Aligned(unsigned start, unsigned bound, unsigned step)
    {
        const long long distance = static_cast<long long>(bound) - start;
        const long long over = distance % step;   // has the direction's sign
        return over == 0 ? bound : bound + (over > 0 ? static_cast<long long>(step) - over : -(step + over));
    }

    unsigned m_first;
    unsigned m_end;   // behind the last page; below the first when the numbers run over, which admits none
    std::vector<unsigned>& m_pages;
};

/// The end of an open range: the page count, or with a step of two the last page that the step meets.
unsigned OpenEnd(unsigned start, unsigned count, unsigned step)
{
    return step == 2 && start % 2 != count % 2 ? count - 1 : count;
}
}   // namespace

void TvlUtl::MakePageRangeFromString(unsigned first, unsigned count, TvlString text, std::vector<unsigned>& pages)
{
    const std::wstring normalised = WithoutLetters(text.Std());
    std::wstring_view rest = normalised;
    Pages accepted(first, count, pages);
    bool inRange = false;
    unsigned step = 1;
    unsigned previous = 0;
    while (!rest.empty() || inRange) {
        const Item item = TakeItem(rest);
        if (inRange) {
            const unsigned start = previous == kNoNumber ? 1 : previous;
            const unsigned end = item.hasNumber ? item.number : OpenEnd(start, count, step);
            accepted.AddRange(start, end, step);
            previous = end;
            inRange = false;
            continue;
        }
        inRange = item.separator == L'-' || item.separator == L'~';
        step = item.separator == L'~' ? 2 : 1;
        if (!inRange)
            accepted.Add(item.number);
        previous = item.number;
    }
    if (pages.empty())
        pages.push_back(1);
}

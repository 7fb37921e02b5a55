// The suite's string: a value over the standard string, with the operations that its callers know.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/Format.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// How texts are compared.
enum class CompareCase : int {
    Sensitive = 0,     ///< ordinal, by code unit
    Insensitive = 1,   ///< by simple case folding, independent of the locale
};

/// Simple case folding of one UTF-16 or UTF-32 unit, as in Unicode's CaseFolding (C and S); independent of the locale.
TVLSIBLINGS_API wchar_t TvlFoldCase(wchar_t c);

template <class C>
class TvlStringViewT;

/// A text. `C` is wchar_t (16 bits on windows, 32 on linux) or char. Positions count units of `C` from 0.
template <class C>
class TvlStringT {
public:
    static constexpr int npos = -1;   ///< no position

    /// An empty text.
    TvlStringT() = default;
    /// A null pointer is an empty text.
    TvlStringT(const C* text) : m_text(text ? text : EmptyText()) { }
    /// `length` units from `text` on, zeros among them included.
    TvlStringT(const C* text, std::size_t length) : m_text(text, length) { }
    /// @{
    /// Takes over, or copies, the characters as they are.
    TvlStringT(std::basic_string<C> text) : m_text(std::move(text)) { }
    explicit TvlStringT(std::basic_string_view<C> text) : m_text(text) { }
    /// @}
    /// `count` times the unit `c`; the count must not be negative.
    explicit TvlStringT(C c, int count = 1) : m_text(static_cast<std::size_t>(count), c) { }

    /// The units with a zero behind them; good until the text changes.
    const C* c_str() const { return m_text.c_str(); }
    /// The units without the zero; good until the text changes.
    operator std::basic_string_view<C>() const { return m_text; }
    /// The standard string that holds the text.
    const std::basic_string<C>& Std() const { return m_text; }

    /// Units, which are as many characters in ASCII alone.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    /// Whether the text has no units.
    bool IsEmpty() const { return m_text.empty(); }
    /// Makes the text empty.
    void Empty() { m_text.clear(); }

    /// The unit at `index`, which must be below the length.
    C GetAt(int index) const { return m_text[static_cast<std::size_t>(index)]; }
    /// GetAt.
    C operator[](int index) const { return GetAt(index); }
    /// Replaces the unit at `index`, which must be below the length.
    void SetAt(int index, C c) { m_text[static_cast<std::size_t>(index)] = c; }

    /// The first `count` units, or all of them when there are fewer; a negative count gives an empty text.
    TvlStringT Left(int count) const { return Mid(0, count); }
    /// The last `count` units, or all of them when there are fewer.
    TvlStringT Right(int count) const { return count >= GetLength() ? *this : Mid(GetLength() - std::max(count, 0)); }
    /// At most `count` units from `first` on; what lies outside the text is left away.
    TvlStringT Mid(int first, int count) const
    {
        first = std::clamp(first, 0, GetLength());
        count = std::clamp(count, 0, GetLength() - first);
        return TvlStringT(m_text.data() + first, static_cast<std::size_t>(count));
    }
    /// All from `first` on.
    TvlStringT Mid(int first) const { return Mid(first, GetLength()); }

    /// Position of the first occurrence at or after `start`, or -1.
    int Find(C c, int start = 0) const { return Position(m_text.find(c, static_cast<std::size_t>(start))); }
    /// The same for a text, which must not be null; an empty one is found at once.
    int Find(const C* text, int start = 0) const
    {
        return Position(m_text.find(text, static_cast<std::size_t>(start)));
    }
    /// Position of the last occurrence, or -1.
    int ReverseFind(C c) const { return Position(m_text.rfind(c)); }
    /// Position of the first unit that is one of `set`, or -1.
    int FindOneOf(const C* set) const { return Position(m_text.find_first_of(set)); }

    /// Removes every occurrence of `c`; returns how many there were.
    int Remove(C c) { return static_cast<int>(std::erase(m_text, c)); }
    /// Replaces every `from` by `to`; returns how many there were. An empty `from` replaces nothing.
    int Replace(const TvlStringT& from, const TvlStringT& to)
    {
        int count = 0;
        if (from.IsEmpty())
            return count;
        for (std::size_t at = 0; (at = m_text.find(from.m_text, at)) != std::basic_string<C>::npos;
             at += to.m_text.size(), ++count)
            m_text.replace(at, from.m_text.size(), to.m_text);
        return count;
    }

    /// Turns letters into small ones, by simple case folding and independent of the locale.
    TvlStringT& MakeLower()
    {
        for (C& c : m_text)
            c = static_cast<C>(TvlFoldCase(static_cast<wchar_t>(c)));
        return *this;
    }
    /// Removes the characters of `set` from both ends.
    TvlStringT& Trim(const C* set)
    {
        m_text.erase(std::min(m_text.find_last_not_of(set) + 1, m_text.size()));
        m_text.erase(0, m_text.find_first_not_of(set));
        return *this;
    }
    /// The next piece at or after `start` between characters of `delimiters`, which are passed over in a row; `start` goes
    /// behind it. Empty, with `start` -1, when there is no further piece.
    TvlStringT Tokenize(const C* delimiters, int& start) const
    {
        const std::size_t begin = start < 0 ? std::basic_string<C>::npos
                                            : m_text.find_first_not_of(delimiters, static_cast<std::size_t>(start));
        if (begin == std::basic_string<C>::npos) {
            start = npos;
            return TvlStringT();
        }
        const std::size_t end = std::min(m_text.find_first_of(delimiters, begin), m_text.size());
        start = static_cast<int>(std::min(end + 1, m_text.size()));
        return TvlStringT(m_text.data() + begin, end - begin);
    }

    /// Negative, 0 or positive as this text stands before, equals or stands after `other`.
    int Compare(const TvlStringT& other, CompareCase mode = CompareCase::Sensitive) const
    {
        return TvlStringViewT<C>(*this).Compare(other, mode);
    }
    /// Compare by simple case folding.
    int CompareNoCase(const TvlStringT& other) const { return Compare(other, CompareCase::Insensitive); }

    /// @{
    /// Puts a text or a unit behind.
    TvlStringT& operator+=(const TvlStringT& other)
    {
        m_text += other.m_text;
        return *this;
    }
    TvlStringT& operator+=(C c)
    {
        m_text += c;
        return *this;
    }
    /// @}
    /// Puts `count` units from `text` on behind.
    TvlStringT& Append(const C* text, int count)
    {
        m_text.append(text, static_cast<std::size_t>(count));
        return *this;
    }

    /// Replaces the text by a printf form with Windows' meaning on every target: in a wide form %s is wide and %S
    /// narrow text, %ls wide and %hs narrow; %lu has 32 bits, %I64u 64. Arguments carry their own type: a number under
    /// a text conversion, or a missing argument, gives nothing instead of a read of memory.
    template <class... Args>
    TvlStringT& Format(const C* form, const Args&... args)
    {
        const TvlPlatform::FormatArgument list[] = {
            TvlPlatform::FormatArgument(args)..., TvlPlatform::FormatArgument()};
        m_text = TvlPlatform::FormatText(form, list, sizeof...(Args));
        return *this;
    }

    /// @{
    /// By units, without regard to what they mean; a null pointer is not allowed.
    friend bool operator==(const TvlStringT& a, const TvlStringT& b) { return a.m_text == b.m_text; }
    friend bool operator==(const TvlStringT& a, const C* b) { return a.m_text == b; }
    friend auto operator<=>(const TvlStringT& a, const TvlStringT& b) { return a.m_text <=> b.m_text; }
    /// @}
    /// @{
    /// One text behind the other; a null pointer is an empty text.
    friend TvlStringT operator+(TvlStringT a, const TvlStringT& b) { return std::move(a += b); }
    friend TvlStringT operator+(TvlStringT a, const C* b) { return std::move(a += TvlStringT(b)); }
    friend TvlStringT operator+(const C* a, const TvlStringT& b) { return TvlStringT(a) += b; }
    friend TvlStringT operator+(TvlStringT a, C b) { return std::move(a += b); }
    /// @}

private:
    static const C* EmptyText()
    {
        static const C empty{};
        return &empty;
    }
    static int Position(std::size_t at) { return at == std::basic_string<C>::npos ? npos : static_cast<int>(at); }

    std::basic_string<C> m_text;
};

/// A text that somebody else owns, not necessarily ended by a zero.
template <class C>
class TvlStringViewT {
public:
    /// An empty text.
    TvlStringViewT() = default;
    /// @{
    /// Refers to text that lives as long as the view; null is an empty one.
    TvlStringViewT(std::basic_string_view<C> text) : m_text(text) { }
    TvlStringViewT(const TvlStringT<C>& text) : m_text(text) { }
    TvlStringViewT(const C* text) : m_text(text ? std::basic_string_view<C>(text) : std::basic_string_view<C>()) { }
    /// @}

    /// The units as a standard view.
    operator std::basic_string_view<C>() const { return m_text; }
    /// The first unit; no zero need follow the last.
    const C* data() const { return m_text.data(); }
    /// Units, which are as many characters in ASCII alone.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    /// Whether there are no units.
    bool IsEmpty() const { return m_text.empty(); }
    /// The unit at `index`, which must be below the length.
    C GetAt(int index) const { return m_text[static_cast<std::size_t>(index)]; }
    /// The first `count` units, or all of them when there are fewer; none for a negative count.
    TvlStringViewT Left(int count) const { return m_text.substr(0, static_cast<std::size_t>(std::max(count, 0))); }

    /// Negative, 0 or positive as this text stands before, equals or stands after `other`.
    int Compare(TvlStringViewT other, CompareCase mode = CompareCase::Sensitive) const
    {
        if (mode == CompareCase::Sensitive)
            return m_text.compare(other.m_text);
        const std::size_t shared = std::min(m_text.size(), other.m_text.size());
        for (std::size_t i = 0; i < shared; ++i) {
            const auto a = TvlFoldCase(static_cast<wchar_t>(m_text[i]));
            const auto b = TvlFoldCase(static_cast<wchar_t>(other.m_text[i]));
            if (a != b)
                return a < b ? -1 : 1;
        }
        return m_text.size() == other.m_text.size() ? 0 : m_text.size() < other.m_text.size() ? -1 : 1;
    }
    /// Compare by simple case folding.
    int CompareNoCase(TvlStringViewT other) const { return Compare(other, CompareCase::Insensitive); }

    /// @{
    /// By units, without regard to what they mean.
    friend bool operator==(TvlStringViewT a, TvlStringViewT b) { return a.m_text == b.m_text; }
    friend auto operator<=>(TvlStringViewT a, TvlStringViewT b) { return a.m_text <=> b.m_text; }
    /// @}

private:
    std::basic_string_view<C> m_text;
};

/// The string of all interfaces.
using TvlString = TvlStringT<wchar_t>;
/// The view of all interfaces.
using TvlStringView = TvlStringViewT<wchar_t>;

/// Of equal texts the same on one target; it differs between targets.
template <class C>
struct std::hash<TvlStringT<C>> {
    /// As the standard string's.
    std::size_t operator()(const TvlStringT<C>& text) const { return std::hash<std::basic_string<C>>()(text.Std()); }
};

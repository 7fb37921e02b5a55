// Windows' printf forms on both targets.
#include "siblings/TvlPlatform/Format.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace TvlPlatform {

namespace {
using Kind = FormatArgument::Kind;

constexpr int kMostDigits = 1000;   // of a width or precision: a form is the program's own, never this long

/// One conversion of a form.
struct Conversion {
    bool left = false;
    bool zero = false;
    std::string flags;   // as snprintf takes them
    int width = 0;
    int precision = -1;      // -1 when none is given
    std::size_t bytes = 4;   // of an integer, by its size prefix
    char textSize = 0;       // 'h' narrow, 'l' or 'w' wide, 0 as the form itself
    char type = 0;
};

/// Arguments that carry their types.
class TypedArguments {
public:
    TypedArguments(const FormatArgument* arguments, std::size_t count) : m_next(arguments), m_end(arguments + count) { }

    FormatArgument Next(const Conversion&) { return m_next < m_end ? *m_next++ : FormatArgument(); }

private:
    const FormatArgument* m_next;
    const FormatArgument* m_end;
};

/// Arguments of a C function, whose types the form alone tells.
template <class C>
class VariadicArguments {
public:
    explicit VariadicArguments(std::va_list arguments) { va_copy(m_arguments, arguments); }
    ~VariadicArguments() { va_end(m_arguments); }
    VariadicArguments(const VariadicArguments&) = delete;
    VariadicArguments& operator=(const VariadicArguments&) = delete;

    FormatArgument Next(const Conversion& conversion)
    {
        static constexpr std::string_view kReals = "fFeEgGaA";
        static constexpr std::string_view kIntegers = "diuxXocC";
        const char type = conversion.type;
        if (type == 's' || type == 'S') {
            // A small s is text as wide as the form, a capital one the other; a size prefix decides over both.
            const bool wide = conversion.textSize ? conversion.textSize == 'l' : (type == 's') == (sizeof(C) > 1);
            return wide ? FormatArgument(va_arg(m_arguments, const wchar_t*))
                        : FormatArgument(va_arg(m_arguments, const char*));
        }
        if (type == 'p')
            return va_arg(m_arguments, const void*);
        if (type && kReals.find(type) != std::string_view::npos)
            return va_arg(m_arguments, double);
        if (!type || kIntegers.find(type) == std::string_view::npos)
            return {};
        return conversion.bytes == 8 ? FormatArgument(va_arg(m_arguments, long long))
                                     : FormatArgument(va_arg(m_arguments, int));
    }

private:
    std::va_list m_arguments;
};

template <class C, class Arguments>
class FormReader {
public:
    FormReader(std::basic_string_view<C> text, Arguments& arguments) : m_form(text), m_arguments(arguments) { }

    std::basic_string<C> Run()
    {
        std::basic_string<C> out;
        while (m_at < m_form.size()) {
            const C c = m_form[m_at++];
            if (c != '%')
                out += c;
            else if (Peek() == '%')
                out += m_form[m_at++];
            else
                Append(out, ReadConversion());
        }
        return out;
    }

private:
    C Peek() const { return m_at < m_form.size() ? m_form[m_at] : C(); }
    bool Take(std::string_view word)
    {
        if (m_form.size() - m_at < word.size()
            || !std::equal(word.begin(), word.end(), m_form.begin() + static_cast<std::ptrdiff_t>(m_at)))
            return false;
        m_at += word.size();
        return true;
    }

    int ReadNumber()
    {
        if (Take("*")) {
            Conversion number;
            number.type = 'd';
            return static_cast<int>(std::clamp<long long>(m_arguments.Next(number).integer, -kMostDigits, kMostDigits));
        }
        int number = 0;
        for (; Peek() >= '0' && Peek() <= '9'; ++m_at)
            number = std::min(number * 10 + static_cast<int>(Peek() - '0'), kMostDigits);
        return number;
    }

    Conversion ReadConversion()
    {
        Conversion read;
        for (; Peek() && std::string_view("-+ #0").find(static_cast<char>(Peek())) != std::string_view::npos
             && Peek() < 128;
             ++m_at) {
            read.left |= Peek() == '-';
            read.zero |= Peek() == '0';
            read.flags += static_cast<char>(Peek());
        }
        read.width = ReadNumber();
        if (read.width < 0) {
            read.left = true;
            read.flags += '-';
            read.width = -read.width;
        }
        if (Take("."))
            read.precision = std::max(ReadNumber(), -1);
        ReadSize(read);
        if (Peek() && Peek() < 128)
            read.type = static_cast<char>(m_form[m_at++]);
        return read;
    }

    void ReadSize(Conversion& read)
    {
        if (Take("I64") || Take("ll") || Take("j") || Take("z") || Take("t") || Take("I")) {
            read.bytes = 8;
        } else if (Take("I32") || Take("L")) {
            read.bytes = 4;
        } else if (Take("hh")) {
            read.bytes = 1;
        } else if (Take("h")) {
            read.bytes = 2;
            read.textSize = 'h';
        } else if (Take("l") || Take("w")) {
            read.textSize = 'l';
        }
    }

    void Append(std::basic_string<C>& out, const Conversion& conversion)
    {
        switch (conversion.type) {
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
            return AppendInteger(out, conversion, m_arguments.Next(conversion));
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            return AppendReal(out, conversion, m_arguments.Next(conversion));
        case 'c':
        case 'C':
            return AppendPadded(out, conversion, {static_cast<wchar_t>(m_arguments.Next(conversion).integer)});
        case 's':
        case 'S':
            return AppendText(out, conversion, m_arguments.Next(conversion));
        case 'p':
            return AppendPointer(out, m_arguments.Next(conversion));
        default:
            return;
        }
    }

    template <class... Numbers>
    void AppendPrinted(std::basic_string<C>& out, const Conversion& conversion, const char* type, Numbers... numbers)
    {
        std::string form = "%" + conversion.flags + "*";
        if (conversion.precision >= 0)
            form += ".*";
        form += type;
        // 310 digits of the greatest double, its sign and point, and what width and precision may ask for.
        char text[2 * kMostDigits + 330];
        // The form is put together from checked pieces above.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        const int length = conversion.precision >= 0
            ? std::snprintf(text, sizeof text, form.c_str(), conversion.width, conversion.precision, numbers...)
            : std::snprintf(text, sizeof text, form.c_str(), conversion.width, numbers...);
#pragma GCC diagnostic pop
        out.append(text, text + std::clamp<int>(length, 0, sizeof text - 1));
    }

    void AppendInteger(std::basic_string<C>& out, const Conversion& conversion, const FormatArgument& argument)
    {
        if (argument.kind != Kind::Signed && argument.kind != Kind::Unsigned)
            return;
        const bool isSigned = conversion.type == 'd' || conversion.type == 'i';
        const unsigned unused = static_cast<unsigned>(64 - 8 * conversion.bytes);
        const auto raw = static_cast<unsigned long long>(argument.integer) << unused;
        const char type[] = {'l', 'l', conversion.type, 0};
        if (isSigned)
            AppendPrinted(out, conversion, type, static_cast<long long>(raw) >> unused);
        else
            AppendPrinted(out, conversion, type, raw >> unused);
    }

    void AppendReal(std::basic_string<C>& out, const Conversion& conversion, const FormatArgument& argument)
    {
        const char type[] = {conversion.type, 0};
        if (argument.kind == Kind::Float)
            AppendPrinted(out, conversion, type, argument.real);
    }

    void AppendText(std::basic_string<C>& out, const Conversion& conversion, const FormatArgument& argument)
    {
        // The argument knows what it is; the prefix and the capital only matter to compilers that can't tell.
        std::wstring text = argument.kind == Kind::Narrow ? FromUtf8(argument.narrow) : std::wstring(argument.wide);
        if (conversion.precision >= 0 && text.size() > static_cast<std::size_t>(conversion.precision))
            text.resize(static_cast<std::size_t>(conversion.precision));
        AppendPadded(out, conversion, text);
    }

    void AppendPadded(std::basic_string<C>& out, const Conversion& conversion, const std::wstring& text)
    {
        const std::size_t width = static_cast<std::size_t>(conversion.width);
        const std::size_t padding = width > text.size() ? width - text.size() : 0;
        if (!conversion.left)
            out.append(padding, conversion.zero ? C('0') : C(' '));
        if constexpr (sizeof(C) == 1)
            out += ToUtf8(text);
        else
            out += text;
        if (conversion.left)
            out.append(padding, C(' '));
    }

    void AppendPointer(std::basic_string<C>& out, const FormatArgument& argument)
    {
        Conversion digits;
        digits.flags = "0";
        digits.width = 16;
        AppendPrinted(out, digits, "llX", static_cast<unsigned long long>(argument.integer));
    }

    std::basic_string_view<C> m_form;
    Arguments& m_arguments;
    std::size_t m_at = 0;
};
}   // namespace

std::wstring FormatText(const wchar_t* form, const FormatArgument* arguments, std::size_t count)
{
    TypedArguments source(arguments, count);
    return FormReader<wchar_t, TypedArguments>(form, source).Run();
}

std::string FormatText(const char* form, const FormatArgument* arguments, std::size_t count)
{
    TypedArguments source(arguments, count);
    return FormReader<char, TypedArguments>(form, source).Run();
}

std::wstring FormatVariadic(const wchar_t* form, std::va_list arguments)
{
    VariadicArguments<wchar_t> source(arguments);
    return FormReader<wchar_t, VariadicArguments<wchar_t>>(form, source).Run();
}

std::string FormatVariadic(const char* form, std::va_list arguments)
{
    VariadicArguments<char> source(arguments);
    return FormReader<char, VariadicArguments<char>>(form, source).Run();
}

}   // namespace TvlPlatform
